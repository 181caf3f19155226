// The source file and the target file as the main window takes them.
#include <gmock/gmock.h>

#include "driver/files.h"
#include "driver/trimbrook.h"
#include "resources/version.h"

namespace driver {
namespace {

using testing::Each;
using testing::ElementsAre;

/// Whether a camera's box is shown with its number.
bool Shows(const Trimbrook& program, int camera) {
  return program.At(IDC_frmTrimbrook_Check1, camera - 1).IsShown() &&
         program.At(IDC_frmTrimbrook_Label5, camera).IsShown();
}

TEST(Source, AtStartNothingIsChosenAndNothingCanBeSaved) {
  const Trimbrook program;
  EXPECT_EQ(program.main().Text(), TRIMBROOK_NAME_AND_VERSION);
  EXPECT_FALSE(program.At(IDC_frmTrimbrook_Command7).IsShown());
  AwaitFocus(program.At(IDC_frmTrimbrook_Command1));
  EXPECT_FALSE(program.At(IDC_frmTrimbrook_Slider1).IsEnabled());
  for (int camera = 1; camera <= 32; ++camera) {
    EXPECT_EQ(Shows(program, camera), camera <= 16) << camera;
    EXPECT_TRUE(program.At(IDC_frmTrimbrook_Check1, camera - 1).IsTicked());
  }
  program.At(IDC_frmTrimbrook_CheckCTRS).Click();
  for (const int button : {IDC_frmTrimbrook_Command2, IDC_frmTrimbrook_Command3,
                           IDC_frmTrimbrook_Command5, IDC_frmTrimbrook_Command8})
    EXPECT_EQ(program.MessageAfterClick(button), Refusal(kNoSource));

  program.At(IDC_frmTrimbrook_Command4).ClickAndGoOn();
  EXPECT_EQ(program.AwaitEnd(), 0u);
}

TEST(Source, ShowsItsRangeAndSizeUntilTheDialogClosesIt) {
  const Trimbrook program;
  program.OpenSource(Recording("day.60D"));
  const std::string range = "1/31/2003 3:04:05 PM----1/31/2003 3:08:26 PM";
  EXPECT_THAT(program.Texts({IDC_frmTrimbrook_Text2, IDC_frmTrimbrook_Text3, IDC_frmTrimbrook_Text4,
                             IDC_frmTrimbrook_Text5}),
              ElementsAre(range, "6", "6", range));
  EXPECT_EQ(program.First(), 1);
  EXPECT_EQ(program.Last(), 3);
  EXPECT_EQ(program.At(IDC_frmTrimbrook_Slider1).Ask(TBM_GETRANGEMAX), 3);
  EXPECT_TRUE(program.At(IDC_frmTrimbrook_Slider2).IsEnabled());
  EXPECT_THAT(program.EnabledCameras(), ElementsAre(1, 2, 3));
  AwaitFocus(program.At(IDC_frmTrimbrook_Command2));

  program.ChooseTarget(InWork("cancelled.60D"));
  program.ChooseBlocks(2, 3);
  program.SourceDialog().Cancel();
  program.Settle();
  EXPECT_THAT(program.Texts({IDC_frmTrimbrook_Text1, IDC_frmTrimbrook_Text2, IDC_frmTrimbrook_Text3,
                             IDC_frmTrimbrook_Text4, IDC_frmTrimbrook_Text5, IDC_frmTrimbrook_Text6,
                             IDC_frmTrimbrook_Text7}),
              Each(""));
  for (const int slider : {IDC_frmTrimbrook_Slider1, IDC_frmTrimbrook_Slider2})
    EXPECT_FALSE(program.At(slider).IsEnabled());
}

// For a source both kinds, the one used last first, for a target the source's only.
TEST(Source, DialogsOfferTheKindsInTheProgramsFolder) {
  const Trimbrook program;
  const std::string kinds[] = {"JPEG2000 Image Sequences (*.20D)",
                               "Wavelet Image Sequences (*.60D)"};
  const auto expect = [&](const FileDialog& dialog, int kind, const char* count) {
    EXPECT_EQ(dialog.Look(), "Trimbrook, , " + kinds[kind] + count);
    dialog.Cancel();
  };
  for (const int kind : {0, 1}) {
    expect(program.SourceDialog(), kind, " of 2");
    program.OpenSource(Recording(kind == 0 ? "day.60D" : "pictures.20d"));
    expect(program.TargetDialog(), 1 - kind, " of 1");
  }
}

// The first of several is taken, and an open one makes way.
TEST(Source, OpensWhatIsHandedToItIfItEndsAsARecording) {
  const std::string wide = InWork("\xD0\x97\xD0\xB0 \xE9\x8C\xB2.60D");
  const std::string blocks = InWork("blocks.60d");
  CopyTo(Recording("day.60D"), wide);
  const Trimbrook program(" \"" + wide + "\" D:\\pictures.20d");
  program.AwaitSource(wide);
  program.Drop({Recording("cameras32.60D"), wide});
  program.AwaitSource(Recording("cameras32.60D"));
  EXPECT_TRUE(Shows(program, 32));
  EXPECT_THAT(program.EnabledCameras(), ElementsAre(1, 2, 17, 32));
  program.Drop({InWork("none.60D")});
  EXPECT_EQ(program.AnswerMessage(),
            Refusal("Error reading file ...\r\n\r\nThe recording is no longer there."));
  for (const std::uint64_t size : {kBlock, 2 * kBlock + 1}) {
    Resize(blocks, size);
    program.Drop({blocks});
    EXPECT_EQ(program.AnswerMessage(), Refusal("This file is not a valid source file!")) << size;
    program.AwaitSource("");
  }
  Resize(blocks, 2 * kBlock);
  program.Drop({blocks});
  program.AwaitSource(blocks);
  EXPECT_TRUE(program.EnabledCameras().empty());
  EXPECT_FALSE(Shows(program, 17));
}

// What lies far beyond all that 32 bits hold is saved, too.
TEST(LongSource, CanBeStoppedAndKeepsItsCamerasWhenTheirCheckIs) {
  constexpr int kBlocks = 600'000;
  const std::string path = InWork("long of zeros.60D");
  Resize(path, kBlocks * kBlock);
  Patch(path, 0x1FFC00 + 19, "\x01");  // Camera 1 is in the first block only.
  Patch(path, (kBlocks - 1) * kBlock + 7, "last");
  const Trimbrook program;
  const auto reads = [&] {
    const std::string text = program.Text(IDC_frmTrimbrook_Text2);
    return text.starts_with("Reading ... ") && text.ends_with("% (Esc stops)") &&
           !program.At(IDC_frmTrimbrook_Command1).IsEnabled();
  };
  const auto stop = [&] {
    Await("percentage", reads);
    // By other programs, too, nothing can be used meanwhile.
    program.At(IDC_frmTrimbrook_Command4).Ask(BM_CLICK);
    program.At(IDC_frmTrimbrook_Text2).PressAndGoOn(VK_ESCAPE);
    Await("end of the reading", [&] { return !reads(); });
    EXPECT_FALSE(program.ShowsDialog());
  };
  program.AnswerSourceDialog(path);
  stop();
  EXPECT_THAT(program.Texts({IDC_frmTrimbrook_Text1, IDC_frmTrimbrook_Text2}), Each(""));

  program.OpenSource(path);
  const std::string range = program.Text(IDC_frmTrimbrook_Text2);
  program.At(IDC_frmTrimbrook_Slider1).Press(VK_RIGHT);
  program.At(IDC_frmTrimbrook_Command8).ClickAndGoOn();
  stop();
  EXPECT_EQ(program.Text(IDC_frmTrimbrook_Text2), range);
  EXPECT_THAT(program.EnabledCameras(), ElementsAre(1));
  MoveFileA(path.c_str(), (path + " moved").c_str());
  EXPECT_THAT(program.MessageAfterClick(IDC_frmTrimbrook_Command8).text,
              testing::StartsWith("Error reading file ..."));
  EXPECT_THAT(program.EnabledCameras(), ElementsAre(1));
  MoveFileA((path + " moved").c_str(), path.c_str());

  program.At(IDC_frmTrimbrook_Slider1).Press(VK_END);
  program.At(IDC_frmTrimbrook_Slider1).Press(VK_LEFT);
  program.ChooseTarget(InWork("last blocks.60D"));
  program.SaveAndLeave();
  EXPECT_TRUE(HoldsBlocks(InWork("last blocks.60D"), path, kBlocks - 1, kBlocks));

  program.AnswerSourceDialog(path);
  Await("percentage", reads);
  program.main().Close();
  EXPECT_EQ(program.AwaitEnd(), 0u);
  Resize(path, 0);
}

constexpr const char* kNoSpace = "There is not enough space on the disk for the selected file!";

class Target : public testing::Test {
 protected:
  Trimbrook program_;
};

// Without a choice there is no target, but the last one's space is still shown.
TEST_F(Target, NameEndsInTheSourcesKind) {
  program_.OpenSource(Recording("day.60D"));
  for (const auto& [typed, chosen] : {std::pair("plain", "plain.60D"),
                                      {"other.txt", "other.txt.60D"},
                                      {"wrong.20D", "wrong.20D.60D"},
                                      {"small.60d", "small.60d"}}) {
    program_.TargetDialog().Accept(InWork(typed));
    const std::string path = InWork(chosen);
    Await(path, [&] { return program_.Text(IDC_frmTrimbrook_Text6) == path; });
  }
  program_.Settle();
  const std::string space = program_.Text(IDC_frmTrimbrook_Text7);
  EXPECT_GT(std::stol(space), 0);
  EXPECT_EQ(space.find_first_not_of("0123456789"), std::string::npos);

  Resize(InWork("old.60D"), 7);
  program_.TargetDialog().Accept(InWork("old"));
  program_.AnswerMessage(IDNO);
  const FileDialog again = program_.AwaitFileDialog(kTargetDialog);
  EXPECT_THAT(again.Look(), testing::HasSubstr(", old.60D, "));
  again.Cancel();
  program_.Settle();
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text6), "");
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text7), space);
  EXPECT_EQ(Read(InWork("old.60D")).size(), 7u);
}

TEST_F(Target, TheSpaceCheckFollowsTheRange) {
  if (!FileExists("F:\\")) GTEST_SKIP() << "no small disk: mounting one takes root";
  program_.Prepare(Recording("day.60D"), "F:\\too large.60D");
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text7), "4");
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3), Refusal(kNoSpace));
  // How large a file of some cameras gets is not known.
  program_.ChooseCameras({2});
  for (const int button : {IDNO, IDYES}) {
    program_.At(IDC_frmTrimbrook_Command3).ClickAndGoOn();
    AwaitFocus(program_.AwaitShown(kDialogClass).Control(IDNO));
    EXPECT_EQ(program_.AnswerMessage(button),
              Refusal("The selected file may not fit on the disk. Do you want to continue?"));
  }
  program_.FinishSave();
  DeleteFileA("F:\\too large.60D");
  program_.ChooseCameras({1, 2, 3});
  program_.ChooseBlocks(2, 3);
  Append("F:\\filling.bin", std::string(1 << 20, 'x'));
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3), Refusal(kNoSpace));
  DeleteFileA("F:\\filling.bin");
  program_.SaveAndLeave();
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text7), "0");
  EXPECT_TRUE(HoldsBlocks("F:\\too large.60D", Recording("day.60D"), 2, 3));
}

// Until all is chosen, a save is refused.
TEST_F(Target, CamerasAreThoseOfTheRangeThatWasLookedAtLast) {
  const std::string source = InWork("late camera.60D");
  const std::string target = InWork("late camera saved.60D");
  CopyTo(Recording("day.60D"), source);
  for (int block = 0; block < 2; ++block)  // Camera 3 is in the last block only.
    Patch(source, block * kBlock + 0x1FFC00 + 19, "\x03");
  program_.OpenSource(source);
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3),
            Refusal("Please select the target file first!"));
  program_.ChooseTarget(target);
  program_.At(IDC_frmTrimbrook_cmdClear).Click();
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3),
            Refusal("Please select at least one camera!"));
  program_.At(IDC_frmTrimbrook_cmdSet).Click();
  program_.ChooseBlocks(1, 2);
  EXPECT_THAT(program_.EnabledCameras(), ElementsAre(1, 2, 3));
  program_.ChooseCameras({3});
  PressUntil("availability", program_.main(), {VK_F5}, [&] {
    return program_.EnabledCameras() == std::vector{1, 2};
  });
  // Who saves has it looked at again where nobody has: camera 3 has kept its tick.
  program_.ChooseBlocks(1, 3);
  program_.SaveAndLeave();
  EXPECT_THAT(program_.EnabledCameras(), ElementsAre(1, 2, 3));
  CheckLater({"--compare", source, "--cameras", "3", target});
}

}  // namespace
}  // namespace driver
