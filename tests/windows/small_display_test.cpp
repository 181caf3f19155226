#include <gmock/gmock.h>

#include <set>

#include "driver/files.h"
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

  std::set<int> visited;
  for (const Window& control : program.main().Controls()) {
    const bool isStop = (GetWindowLongW(control.handle(), GWL_STYLE) & WS_TABSTOP) != 0;
    if (!isStop || !control.IsShown() || !control.IsEnabled()) continue;
    const int id = GetDlgCtrlID(control.handle());
    program.main().Ask(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control.handle()), TRUE);
    EXPECT_TRUE(Holds(ClientArea(program.main()), control.Place())) << "control " << id;
    visited.insert(id);
  }
  EXPECT_TRUE(visited.count(IDC_frmTrimbrook_Command3));
  EXPECT_TRUE(visited.count(IDC_frmTrimbrook_Text13));

  const auto bars = [&] {
    return GetWindowLongW(program.main().handle(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL);
  };
  EXPECT_NE(bars(), 0);
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  EXPECT_EQ(bars(), 0);
}

}  // namespace
}  // namespace driver
