#include <gmock/gmock.h>

#include "driver/files.h"
#include "driver/trimbrook.h"

namespace driver {
namespace {

/// Opens the recording that starts on 31 January 2003 at 12:30:05 and checks how its start is
/// shown, and that Reset and Confirm understand it.
void ExpectStart(const std::string& text) {
  const Trimbrook program;
  program.OpenSource(Recording("noon.60D"));
  const std::string range = program.Text(IDC_frmTrimbrook_Text2);
  EXPECT_EQ(range.substr(0, range.find("----")), text);
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program.At(IDC_frmTrimbrook_Command6).Click();
  EXPECT_EQ(program.Text(IDC_frmTrimbrook_Text8), "12");
  EXPECT_EQ(program.Text(IDC_frmTrimbrook_Text9), "30");
  EXPECT_EQ(program.Text(IDC_frmTrimbrook_Text10), "5");
  program.At(IDC_frmTrimbrook_Command5).Click();
  EXPECT_FALSE(program.ShowsDialog());
  EXPECT_EQ(program.First(), 1);
}

TEST(Locale, TwelveHours) {
  ExpectStart("1/31/2003 12:30:05 PM");
}

TEST(Locale, TwentyFourHours) {
  ExpectStart("1/31/2003 12:30:05");
}

TEST(Locale, German) {
  ExpectStart("31.1.2003 12:30:05");
}

}  // namespace
}  // namespace driver
