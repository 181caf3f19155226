#include <cstdio>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/input.h"
#include "driver/screenshot.h"
#include "driver/wizard.h"

namespace driver {
namespace {

/// The CD wizard from page to page, for `./run` on a machine without a display.
class DemonstrationOfWizard : public Wizard {
 protected:
  void Show(const std::string& name) {
    std::printf("CD wizard: %s\n", name.c_str());
    std::fflush(stdout);
    SaveScreenshot("cd-" + std::to_string(++step_) + "-" + name);
  }

 private:
  int step_ = 0;
};

TEST_F(DemonstrationOfWizard, WritesADisc) {
  Register(kDirectCd);
  const std::string recording = InWork("many blocks.60D");
  for (int i = 0; i < 20; ++i) Append(recording, Read(Recording("sample.60D")));
  Open(recording);
  OpenWizard();
  BringToFront(*window_);
  Show("welcome");
  Press(kStart);
  AwaitPage(kDrivePage);
  Show("drive");
  Press(kChooseDrive);
  AwaitPage(kNamePage);
  AwaitBurner(kDirectCd);
  At(IDC_frmSaveToCD_Text1).SetText("Hand-over");
  BringToFront(*window_);
  Show("file-name");
  {
    const auto pause = CatchCopy();
    Show("copying");
  }
  AwaitPage(kEjectPage);
  Show("eject");
  EXPECT_TRUE(Read("E:\\Hand-over.60D") == Read(recording));
  Press(kEject);
  AwaitPage(kDonePage);
  Show("done");
  Press(kFinish);
  ExpectWizardGone();
}

/// The wizard for whoever wants to use it himself: `./run wizard`.
class WizardByHand : public Wizard {
 protected:
  void HandOver() {
    Open(Recording("sample.60D"));
    OpenWizard();
    BringToFront(*window_);
    const Window heading = At(IDC_frmSaveToCD_Label2);
    for (; program_.Runs(); Sleep(100))
      if (heading.Caption() == kEjectPage) MakeFile(InWork("eject"), 0);
  }
};

TEST_F(WizardByHand, DirectCD) {
  Register(kDirectCd);
  HandOver();
}

TEST_F(WizardByHand, DragToDisc) {
  Register(kDirectCd);
  Register(kDragToDisc);
  HandOver();
}

}  // namespace
}  // namespace driver
