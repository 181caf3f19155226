#include <gmock/gmock.h>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/input.h"
#include "driver/trimbrook.h"

namespace driver {
namespace {

using testing::ElementsAre;

constexpr const char* kNoTarget = "Please select the target file first!";
constexpr const char* kNoCamera = "Please select at least one camera!";
constexpr const char* kNoSpace = "There is not enough space on the disk for the selected file!";

class Target : public testing::Test {
 protected:
  FileDialog OpenDialog() {
    program_.At(IDC_frmTrimbrook_Command2).ClickAndGoOn();
    return program_.AwaitFileDialog("Save New File");
  }

  Trimbrook program_;
};

TEST_F(Target, DialogOffersTheSourcesKindOnly) {
  for (const auto& [source, filter] : {std::pair("day.60D", "Wavelet Image Sequences (*.60D)"),
                                       {"pictures.20d", "JPEG2000 Image Sequences (*.20D)"}}) {
    program_.OpenSource(Recording(source));
    const FileDialog dialog = OpenDialog();
    EXPECT_EQ(dialog.Look(), std::string("Trimbrook, , ") + filter + " of 1");
    dialog.Cancel();
  }
}

// Without a choice there is no target, but the last one's space is still shown.
TEST_F(Target, NameEndsInTheSourcesKind) {
  program_.OpenSource(Recording("day.60D"));
  for (const auto& [typed, chosen] : {std::pair("plain", "plain.60D"),
                                      {"other.txt", "other.txt.60D"},
                                      {"wrong.20D", "wrong.20D.60D"},
                                      {"small.60d", "small.60d"}}) {
    OpenDialog().Accept(InWork(typed));
    Await(chosen, [&] { return program_.Text(IDC_frmTrimbrook_Text6) == InWork(chosen); });
  }
  program_.Settle();
  const std::string space = program_.Text(IDC_frmTrimbrook_Text7);
  EXPECT_GT(std::stol(space), 0);
  EXPECT_EQ(space.find_first_not_of("0123456789"), std::string::npos);

  MakeFile(InWork("old.60D"), 7);
  OpenDialog().Accept(InWork("old"));
  program_.AnswerMessage(IDNO);
  const FileDialog again = program_.AwaitFileDialog("Save New File");
  EXPECT_THAT(again.Look(), testing::HasSubstr(", old.60D, "));
  again.Cancel();
  program_.Settle();
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text6), "");
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text7), space);
  EXPECT_EQ(Read(InWork("old.60D")).size(), 7u);
}

TEST_F(Target, SaveIsRefusedUntilAllIsChosen) {
  program_.OpenSource(Recording("day.60D"));
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3), Refusal(kNoTarget));
  program_.ChooseTarget(InWork("never.60D"));
  program_.At(IDC_frmTrimbrook_cmdClear).Click();
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3), Refusal(kNoCamera));
  EXPECT_FALSE(FileExists(InWork("never.60D")));
  program_.At(IDC_frmTrimbrook_cmdSet).Click();
  EXPECT_TRUE(program_.At(IDC_frmTrimbrook_Check1, 31).IsTicked());
}

TEST_F(Target, TheSpaceCheckFollowsTheRange) {
  if (!FileExists("F:\\")) GTEST_SKIP() << "no small disk: mounting one takes root";
  program_.Prepare(Recording("day.60D"), "F:\\too large.60D");
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text7), "4");
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3), Refusal(kNoSpace));
  program_.ChooseBlocks(2, 3);
  Append("F:\\filling.bin", std::string(1 << 20, 'x'));
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3), Refusal(kNoSpace));
  DeleteFileA("F:\\filling.bin");
  program_.SaveAndLeave();
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text7), "0");
  EXPECT_TRUE(HoldsBlocks("F:\\too large.60D", Recording("day.60D"), 2, 3));
}

TEST_F(Target, CamerasAreThoseOfTheRangeThatWasLookedAtLast) {
  const std::string source = InWork("late camera.60D");
  const std::string target = InWork("late camera saved.60D");
  CopyTo(Recording("day.60D"), source);
  for (int block = 0; block < 2; ++block)  // Camera 3 is in the last block only.
    Patch(source, block * kBlock + 0x1FFC00 + 19, "\x03");
  program_.Prepare(source, target);
  program_.ChooseBlocks(1, 2);
  EXPECT_THAT(program_.EnabledCameras(), ElementsAre(1, 2, 3));
  PressUntil("availability", program_.main(), {VK_F5}, [&] {
    return program_.EnabledCameras() == std::vector{1, 2};
  });

  // Who saves has it looked at again where nobody has.
  program_.ChooseCameras({});
  program_.ChooseBlocks(1, 3);
  program_.PressSaveToCd();
  EXPECT_EQ(program_.AnswerMessage().text,
            "No CDRom was detected on your computer, the wizard will not continue!");
  EXPECT_THAT(program_.EnabledCameras(), ElementsAre(1, 2, 3));
  program_.ChooseBlocks(1, 2);
  program_.At(IDC_frmTrimbrook_Command8).Click();
  program_.ChooseBlocks(1, 3);
  program_.SaveAndLeave();  // Camera 3 has kept its tick and is there again.
  CheckLater({"--compare", source, "--cameras", "3", target});
}

}  // namespace
}  // namespace driver
