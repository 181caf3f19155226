#include <gmock/gmock.h>

#include <set>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/input.h"
#include "driver/trimbrook.h"

namespace driver {
namespace {

bool Holds(const RECT& outer, const RECT& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

RECT ClientArea(const Window& window) {
  RECT area = {};
  GetClientRect(window.handle(), &area);
  MapWindowPoints(window.handle(), nullptr, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

TEST(SmallDisplay, TheUnfoldedWindowFitsAndScrollsWithTheFocus) {
  const Trimbrook program;
  RECT screen = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
  program.OpenSource(Recording("day.60D"));
  EXPECT_TRUE(Holds(screen, program.main().Place()));
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  EXPECT_TRUE(Holds(screen, program.main().Place()));

  BringToFront(program.main());
  std::set<HWND> visited;
  HWND focus = nullptr;
  while (visited.insert(focus).second) {
    PressTogether({VK_TAB});
    Await("next control", [&] { return FocusOf(program.main()).handle() != focus; });
    focus = FocusOf(program.main()).handle();
    program.main().Settle();
    EXPECT_TRUE(Holds(ClientArea(program.main()), Window(focus).Place()))
        << "control " << GetDlgCtrlID(focus);
  }
  EXPECT_TRUE(visited.count(program.At(IDC_frmTrimbrook_Command3).handle()));
  EXPECT_TRUE(visited.count(program.At(IDC_frmTrimbrook_Text13).handle()));
}

}  // namespace
}  // namespace driver
