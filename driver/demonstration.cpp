#include <gtest/gtest.h>

#include <cstdio>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/trimbrook.h"

namespace driver {
namespace {

/// Says what has been done and leaves a picture of it.
void Show(const std::string& what, const std::string& name) {
  static int step = 0;
  const std::string number = std::to_string(++step);
  std::printf("%2d. %s\n", step, what.c_str());
  std::fflush(stdout);
  SaveScreenshot((step < 10 ? "0" : "") + number + "-" + name);
}

/// Saves what is chosen and shows the progress window when it is done.
void SaveAs(const Trimbrook& program, const std::string& target, const std::string& what,
            const std::string& name) {
  program.ChooseTarget(target);
  program.Save();
  Show(what, name);
  program.LeaveSave();
}

/// The main job from end to end, for `./run` on a machine without a display.
TEST(Demonstration, MainJob) {
  const Trimbrook program;
  BringToFront(program.main());
  Show("Started", "started");

  const std::string wavelet = Recording("sample.60D");
  program.OpenSource(wavelet);
  Show("Opened sample.60D", "opened");
  program.ChooseBlocks(2, 3);
  Show("Narrowed the range to blocks 2 to 3", "range");
  SaveAs(program, InWork("blocks.60D"), "Saved all cameras: the blocks as they are",
         "saved-blocks");
  EXPECT_TRUE(HoldsBlocks(InWork("blocks.60D"), wavelet, 2, 3));

  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  Show("Unfolded the custom time range", "custom-range");
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program.ChooseCameras({1, 3});
  Show("Chose cameras 1 and 3", "cameras");
  SaveAs(program, InWork("cameras.60D"), "Saved cameras 1 and 3: rebuilt", "saved-cameras");
  CheckLater({"--compare", wavelet, "--cameras", "1,3", "--blocks", "2-3", InWork("cameras.60D")});

  const std::string pictures = Recording("sample.20D");
  program.OpenSource(pictures);
  program.ChooseCameras({2});
  Show("Opened sample.20D and chose camera 2", "opened-20D");
  SaveAs(program, InWork("pictures.20D"), "Saved camera 2: rebuilt", "saved-20D");
  CheckLater({"--compare", pictures, "--cameras", "2", InWork("pictures.20D")});
  CheckLater({"--check", InWork("pictures.20D")});
}

}  // namespace
}  // namespace driver
