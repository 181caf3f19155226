#include <gtest/gtest.h>

#include <cstdio>

#include "driver/files.h"
#include "driver/trimbrook.h"

namespace driver {
namespace {

/// Says what has been done and leaves a picture of it.
void Show(const std::string& what) {
  static char step = 'a';
  std::printf("%c %s\n", step, what.c_str());
  std::fflush(stdout);
  SaveScreenshot(std::string(1, step++) + " " + what);
}

/// Saves what is chosen and shows the progress window when it is done.
void SaveAs(const Trimbrook& program, const std::string& target, const std::string& what) {
  program.ChooseTarget(target);
  program.Save();
  Show("Saved " + what);
  program.LeaveSave();
}

/// The main job from end to end, for `./run` on a machine without a display.
TEST(Demonstration, MainJob) {
  const Trimbrook program;
  SetCursorPos(0, 0);  // No tool tip gets into the pictures.
  BringToFront(program.main());
  Show("Started");

  const std::string wavelet = Recording("sample.60D");
  program.OpenSource(wavelet);
  Show("Opened sample.60D");
  program.ChooseBlocks(2, 3);
  Show("Narrowed the range to blocks 2 to 3");
  SaveAs(program, InWork("blocks.60D"), "all cameras, the blocks as they are");
  EXPECT_TRUE(HoldsBlocks(InWork("blocks.60D"), wavelet, 2, 3));

  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program.TypeTime(IDC_frmTrimbrook_Text8, {"12", "1", "45"});
  program.TypeTime(IDC_frmTrimbrook_Text11, {"12", "4", "0"});
  program.At(IDC_frmTrimbrook_Command5).Click();
  Show("Confirmed a custom time range");
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program.ChooseCameras({1, 3});
  Show("Chose cameras 1 and 3");
  SaveAs(program, InWork("cameras.60D"), "cameras 1 and 3, rebuilt");
  CheckLater({"--compare", wavelet, "--cameras", "1,3", "--blocks", "2-3", InWork("cameras.60D")});
}

}  // namespace
}  // namespace driver
