#include <gmock/gmock.h>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"

namespace driver {
namespace {

using testing::IsEmpty;

/// What a user or the system does to a progress window that stands still, by name.
const std::pair<const char*, void (*)(const Window& save)> kWays[] = {
    {"button", [](const Window& save) { save.Control(IDC_frmSaveFile_cmdCancel).ClickAndGoOn(); }},
    {"title bar",
     [](const Window& save) { PostMessageW(save.handle(), WM_SYSCOMMAND, SC_CLOSE, 0); }},
    {"Esc",
     [](const Window& save) { save.Control(IDC_frmSaveFile_cmdCancel).PressAndGoOn(VK_ESCAPE); }},
    {"Alt+F4",
     [](const Window& save) {
       constexpr LPARAM kAltIsDown = 1 << 29;
       PostMessageW(save.handle(), WM_SYSKEYDOWN, VK_F4, kAltIsDown);
     }},
    {"end of session",
     [](const Window& save) { SendNotifyMessageW(save.handle(), WM_ENDSESSION, TRUE, 0); }},
};

class Cancel : public testing::Test {
 protected:
  void AwaitCancelled() {
    program_.AwaitGone("frmSaveFile");
    Await("main window", [&] { return program_.main().IsEnabled(); });
  }

  const Trimbrook program_;
  const std::string target_ = InWork("cancelled.60D");
};

TEST_F(Cancel, InTheMidstLeavesNothing) {
  for (const bool someCameras : {false, true})
    for (const auto& [name, cancel] : kWays) {
      SCOPED_TRACE(name);
      program_.Prepare(Recording("long.60D"), target_);
      if (someCameras) program_.ChooseCameras({1});
      {
        const auto [save, pause] = program_.CatchSave();
        program_.main().Close();  // Takes no notice.
        cancel(save);
      }
      AwaitCancelled();
      EXPECT_FALSE(FileExists(target_));
      EXPECT_THAT(FilesLike(std::string(kProgramFolder) + "WAV*"), IsEmpty());
      PrintFigure(1, "saves cancelled");
    }
  // The next save starts anew.
  program_.Prepare(Recording("day.60D"), target_);
  program_.ChooseCameras({1, 2, 3});
  program_.SaveAndLeave();
  EXPECT_TRUE(HoldsBlocks(target_, Recording("day.60D"), 1, 3));
}

// On a busy machine the click may come too late.
TEST_F(Cancel, BeforeTheStartTouchesNothing) {
  std::size_t kept = 0;
  for (int attempt = 0; attempt < kAttempts && kept == 0; ++attempt) {
    MakeFile(target_, 7);
    program_.Prepare(Recording("long.60D"), target_);
    program_.StartSave().Control(IDC_frmSaveFile_cmdCancel).ClickAndGoOn();
    AwaitCancelled();
    if (FileExists(target_)) kept = Read(target_, 0, 8).size();
  }
  EXPECT_EQ(kept, 7u);
}

}  // namespace
}  // namespace driver
