#include <gmock/gmock.h>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/input.h"
#include "driver/trimbrook.h"
#include "resources/version.h"

namespace driver {
namespace {

using testing::ElementsAre;

/// The boxes of the first cameras are shown, with their numbers, and no others.
void ExpectCameras(const Trimbrook& program, int last) {
  for (int camera = 1; camera <= 32; ++camera) {
    EXPECT_EQ(program.At(IDC_frmTrimbrook_Check1, camera - 1).IsShown(), camera <= last) << camera;
    EXPECT_EQ(program.At(IDC_frmTrimbrook_Label5, camera).IsShown(), camera <= last) << camera;
  }
}

TEST(Source, AtStartNothingIsChosenAndNothingCanBeSaved) {
  const Trimbrook program;
  EXPECT_EQ(program.main().Text(), TRIMBROOK_NAME_AND_VERSION);
  EXPECT_FALSE(program.At(IDC_frmTrimbrook_Command7).IsShown());
  AwaitFocus(program.At(IDC_frmTrimbrook_Command1));
  EXPECT_FALSE(program.At(IDC_frmTrimbrook_Slider1).IsEnabled());
  ExpectCameras(program, 16);
  for (int camera = 1; camera <= 32; ++camera)
    EXPECT_TRUE(program.At(IDC_frmTrimbrook_Check1, camera - 1).IsTicked());
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
  for (const int box : {IDC_frmTrimbrook_Text2, IDC_frmTrimbrook_Text5})
    EXPECT_EQ(program.Text(box), "1/31/2003 3:04:05 PM----1/31/2003 3:08:26 PM");
  for (const int box : {IDC_frmTrimbrook_Text3, IDC_frmTrimbrook_Text4})
    EXPECT_EQ(program.Text(box), "6");
  EXPECT_EQ(program.First(), 1);
  EXPECT_EQ(program.Last(), 3);
  EXPECT_EQ(program.At(IDC_frmTrimbrook_Slider1).Ask(TBM_GETRANGEMAX), 3);
  EXPECT_TRUE(program.At(IDC_frmTrimbrook_Slider2).IsEnabled());
  EXPECT_THAT(program.EnabledCameras(), ElementsAre(1, 2, 3));
  AwaitFocus(program.At(IDC_frmTrimbrook_Command2));

  program.ChooseTarget(InWork("cancelled.60D"));
  program.At(IDC_frmTrimbrook_Command1).ClickAndGoOn();
  program.AwaitFileDialog("Select Source File").Cancel();
  program.Settle();
  for (const int box : {IDC_frmTrimbrook_Text1, IDC_frmTrimbrook_Text2, IDC_frmTrimbrook_Text3,
                        IDC_frmTrimbrook_Text6, IDC_frmTrimbrook_Text7})
    EXPECT_EQ(program.Text(box), "");
  for (const int slider : {IDC_frmTrimbrook_Slider1, IDC_frmTrimbrook_Slider2})
    EXPECT_FALSE(program.At(slider).IsEnabled());
}

TEST(Source, DialogOffersBothKindsInTheProgramsFolderTheOneUsedLastFirst) {
  const Trimbrook program;
  for (const char* kind : {"JPEG2000 Image Sequences (*.20D)", "Wavelet Image Sequences (*.60D)"}) {
    program.At(IDC_frmTrimbrook_Command1).ClickAndGoOn();
    const FileDialog dialog = program.AwaitFileDialog("Select Source File");
    EXPECT_EQ(dialog.Look(), std::string("Trimbrook, , ") + kind + " of 2");
    dialog.Cancel();
    program.OpenSource(Recording("day.60D"));
  }
}

// The first of several is taken, and an open one makes way.
TEST(Source, OpensWhatIsHandedToItIfItHasTwoWholeBlocks) {
  const std::string wide = InWork("\xD0\x97\xD0\xB0 \xE9\x8C\xB2.60D");
  const std::string blocks = InWork("blocks.60d");
  CopyTo(Recording("day.60D"), wide);
  const Trimbrook program(" \"" + wide + "\" D:\\pictures.20d");
  const auto awaitSource = [&](const std::string& path) {
    Await("source " + path, [&] { return program.Text(IDC_frmTrimbrook_Text1) == path; });
  };
  awaitSource(wide);
  program.Drop({Recording("cameras32.60D"), wide});
  awaitSource(Recording("cameras32.60D"));
  for (const std::uint64_t size : {kBlock, 2 * kBlock + 1}) {
    MakeFile(blocks, size);
    program.Drop({blocks});
    EXPECT_EQ(program.AnswerMessage(), Refusal(kInvalidSource)) << size;
    awaitSource("");
  }
  Resize(blocks, 2 * kBlock);
  program.Drop({blocks});
  awaitSource(blocks);
  EXPECT_TRUE(program.EnabledCameras().empty());
}

/// A long recording of zeros with camera 1 in its first block, and what a program does that reads
/// it.
class LongSource : public testing::Test {
 protected:
  LongSource() {
    constexpr std::uint64_t kBlocks = 200'000;
    MakeFile(path_, kBlocks * kBlock);
    Patch(path_, 0x1FFC00 + 19, "\x01");
  }
  ~LongSource() override { Resize(path_, 0); }

  bool Reads() {
    return program_.Text(IDC_frmTrimbrook_Text2).starts_with("Reading ... ") &&
           !program_.At(IDC_frmTrimbrook_Command1).IsEnabled();
  }
  void StopReading() {
    Await("percentage", [&] { return Reads(); });
    program_.At(IDC_frmTrimbrook_Text2).PressAndGoOn(VK_ESCAPE);
    Await("end of the reading", [&] { return !Reads(); });
  }

  const std::string path_ = InWork("long of zeros.60D");
  Trimbrook program_;
};

TEST_F(LongSource, CanBeStoppedAndThenThereIsNone) {
  program_.AnswerSourceDialog(path_);
  Await("percentage", [&] { return Reads(); });
  // By other programs, too, nothing can be used meanwhile.
  program_.At(IDC_frmTrimbrook_Command4).Ask(BM_CLICK);
  StopReading();
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text1), "");
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text2), "");
  EXPECT_FALSE(program_.ShowsDialog());
  EXPECT_TRUE(program_.At(IDC_frmTrimbrook_Command1).IsEnabled());

  program_.AnswerSourceDialog(path_);
  Await("percentage", [&] { return Reads(); });
  program_.main().Close();
  EXPECT_EQ(program_.AwaitEnd(), 0u);
}

TEST_F(LongSource, KeepsItsCamerasWhenTheirCheckIsStoppedOrFails) {
  program_.OpenSource(path_);
  EXPECT_THAT(program_.EnabledCameras(), ElementsAre(1));
  const std::string range = program_.Text(IDC_frmTrimbrook_Text2);
  program_.At(IDC_frmTrimbrook_Slider1).Press(VK_RIGHT);
  program_.At(IDC_frmTrimbrook_Command8).ClickAndGoOn();
  StopReading();
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text2), range);
  EXPECT_THAT(program_.EnabledCameras(), ElementsAre(1));

  MoveFileA(path_.c_str(), (path_ + " moved").c_str());
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command8),
            Refusal("Error reading file ..."));
  EXPECT_THAT(program_.EnabledCameras(), ElementsAre(1));
  MoveFileA((path_ + " moved").c_str(), path_.c_str());
}

TEST(Source, ShowsAsManyCamerasAsItHas) {
  const Trimbrook program;
  const auto frame = [&] { return program.At(IDC_frmTrimbrook_Frame7).Place(); };
  const RECT narrow = frame();
  program.OpenSource(Recording("cameras32.60D"));
  ExpectCameras(program, 32);
  EXPECT_THAT(program.EnabledCameras(), ElementsAre(1, 2, 17, 32));
  EXPECT_GT(frame().right - frame().left, narrow.right - narrow.left);

  program.OpenSource(Recording("pictures.20d"));
  ExpectCameras(program, 16);
  EXPECT_EQ(frame().left, narrow.left);
}

}  // namespace
}  // namespace driver
