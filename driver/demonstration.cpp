#include <cstdio>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/wizard.h"

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

/// The CD wizard from page to page, on the same occasion.
class DemonstrationOfWizard : public Wizard {
 protected:
  void Reached(const std::string& page) override {
    BringToFront(*window_);
    Show(page, "cd-page");
  }
};

TEST_F(DemonstrationOfWizard, WritesADisc) {
  Register(kDirectCd);
  const std::string recording = InWork("many blocks.60D");
  for (int i = 0; i < 20; ++i) Append(recording, Read(Recording("sample.60D")));
  program_.OpenSource(recording);
  GoToNamePage("Hand-over");
  {
    const auto pause = CatchCopy();
    Show("Copying", "cd-copying");
  }
  AwaitPage(kEjectPage);
  EXPECT_TRUE(Read("E:\\Hand-over.60D") == Read(recording));
  Press(kEject);
  AwaitPage(kDonePage);
  Press(kFinish);
  ExpectWizardGone();
}

/// The wizard for whoever wants to use it himself: `./run wizard`.
class WizardByHand : public Wizard {
 protected:
  void HandOver() {
    Register(kDirectCd);
    program_.OpenSource(Recording("sample.60D"));
    OpenWizard();
    BringToFront(*window_);
    const Window heading = At(IDC_frmSaveToCD_Label2);
    for (; program_.Runs(); Sleep(100))
      if (heading.Caption() == kEjectPage) MakeFile(InWork("eject"), 0);
  }
};

TEST_F(WizardByHand, DirectCD) {
  HandOver();
}

TEST_F(WizardByHand, DragToDisc) {
  Register(kDragToDisc);
  HandOver();
}

}  // namespace
}  // namespace driver
