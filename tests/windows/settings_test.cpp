// The program where the system is set up otherwise.
#include <gmock/gmock.h>

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

  int visited = 0;
  for (const Window& control : program.main().Controls()) {
    const bool isStop = (GetWindowLongW(control.handle(), GWL_STYLE) & WS_TABSTOP) != 0;
    if (!isStop || !control.IsShown() || !control.IsEnabled()) continue;
    program.main().Ask(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control.handle()), TRUE);
    EXPECT_TRUE(Holds(ClientArea(program.main()), control.Place()))
        << "control " << GetDlgCtrlID(control.handle());
    ++visited;
  }
  EXPECT_GT(visited, 20);

  const auto bars = [&] {
    return GetWindowLongW(program.main().handle(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL);
  };
  EXPECT_NE(bars(), 0);
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  EXPECT_EQ(bars(), 0);
}

// With a clock of 24 hours, and the day before the month.
TEST(Locale, German) {
  const Trimbrook program;
  program.OpenSource(Recording("noon.60D"));
  const std::string range = program.Text(IDC_frmTrimbrook_Text2);
  EXPECT_EQ(range.substr(0, range.find("----")), "31.1.2003 12:30:05");
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program.At(IDC_frmTrimbrook_Command6).Click();
  EXPECT_THAT(
      program.Texts({IDC_frmTrimbrook_Text8, IDC_frmTrimbrook_Text9, IDC_frmTrimbrook_Text10}),
      testing::ElementsAre("12", "30", "5"));
  program.At(IDC_frmTrimbrook_Command5).Click();
  EXPECT_FALSE(program.ShowsDialog());
  EXPECT_EQ(program.First(), 1);
}

}  // namespace
}  // namespace driver
