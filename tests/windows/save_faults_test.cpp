// Saves that meet faults, are cancelled, or die with their program.
#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <random>

#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"
#include "tests/windows/rounds.h"

namespace driver {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The message of a save that could not be written.
std::string WriteError(const std::string& reason) {
  return "Error writing file ...\r\n\r\n" + reason;
}
const std::string kLong = Recording("long.60D");

/// Temporary files of saves in the program's folder and the targets'.
std::vector<std::string> Temporaries() {
  std::vector<std::string> paths;
  for (const std::string folder : {kProgramFolder, kWork})
    for (const std::string& name : FilesLike(folder + "WAV*")) paths.push_back(folder + name);
  return paths;
}

/// Expects that a file holds the blocks of the long recording, or its images of camera 1.
void ExpectLongSaved(bool someCameras, const std::string& target) {
  if (someCameras)
    CheckLater({"--compare", kLong, "--cameras", "1", target});
  else
    EXPECT_TRUE(HoldsBlocks(target, kLong, 1, kLongBlocks));
}

/// What happens to a save happens to both kinds: whole blocks, and chosen cameras only.
class BothSaves : public testing::TestWithParam<bool> {
 protected:
  BothSaves() { CopyTo(Recording("day.60D"), source_); }
  void Prepare(const std::string& source, const std::string& target) {
    program_.Prepare(source, target);
    if (GetParam()) program_.ChooseCameras({1});
  }
  /// The save that is under way is told to have failed, and why, and leaves nothing behind.
  void ExpectFailure(const testing::Matcher<std::string>& text) {
    const Message message = program_.AnswerMessage();
    EXPECT_EQ(message.title, "Trimbrook");
    EXPECT_THAT(message.text, text);
    const Window save = program_.AwaitShown("frmSaveFile");
    EXPECT_FALSE(program_.ShowsDialog());
    EXPECT_EQ(save.Control(IDC_frmSaveFile_Label2).Text(), "");
    EXPECT_EQ(save.Control(IDC_frmSaveFile_cmdCancel).Text(), "Cancel");
    EXPECT_FALSE(save.Control(IDC_frmSaveFile_cmdOpen).IsEnabled());
    program_.LeaveSave();
    EXPECT_THAT(Temporaries(), IsEmpty());
    PrintFigure(1, "failed saves told");
  }

  const std::string source_ = InWork("source.60D");
  Trimbrook program_;
};

std::string NameOfKind(const testing::TestParamInfo<bool>& kind) {
  return kind.param ? "ChosenCameras" : "Blocks";
}

class SaveFaults : public BothSaves {};
INSTANTIATE_TEST_SUITE_P(Both, SaveFaults, testing::Bool(), NameOfKind);

TEST_P(SaveFaults, ADiskThatGetsFullIsTold) {
  if (!FileExists("F:\\")) GTEST_SKIP() << "no small disk: mounting one takes root";
  Prepare(kLong, "F:\\saved.60D");
  {
    // It has seen that there is room, and writes already.
    const auto pause = program_.CatchSave();
    RunOutside("head -c 202M /dev/zero >dosdevices/f:/filler || true");
    Await("no room", [] {
      ULARGE_INTEGER free = {};
      return GetDiskFreeSpaceExA("F:\\", &free, nullptr, nullptr) && free.QuadPart < 1 << 20;
    });
  }
  ExpectFailure(WriteError("The disk is full."));
  EXPECT_THAT(FilesLike("F:\\*"), ElementsAre("filler"));
  DeleteFileA("F:\\filler");
}

TEST_P(SaveFaults, TheSourceIsNoTargetUnderWhateverName) {
  CreateHardLinkA(InWork("hard link.60D").c_str(), source_.c_str(), nullptr);
  const std::string before = Read(source_);
  for (const std::string& target :
       {source_, InWork("SOURCE.60d"), InWork("hard link.60D"), InWork("link.60D")}) {
    SCOPED_TRACE(target);
    Prepare(source_, target);
    program_.StartSave();
    ExpectFailure(WriteError("The target is the recording itself."));
    EXPECT_TRUE(Read(target) == before);
  }
}

TEST_P(SaveFaults, AReadOnlyDiskIsTold) {
  if (!FileExists("G:\\")) GTEST_SKIP() << "no read-only disk: mounting one takes root";
  Prepare(source_, "G:\\saved.60D");
  program_.StartSave();
  // Wine's reason is that access is denied.
  ExpectFailure(testing::StartsWith(WriteError("")));
}

TEST_P(SaveFaults, ATargetThatIsReadMeanwhileIsReplacedWhenItIsLetGo) {
  const std::string target = InWork("read.60D");
  Resize(target, 7);
  Prepare(kLong, target);
  auto pause = program_.CatchSave();
  std::ifstream reader(target, std::ios::binary);
  pause.reset();
  const Window words = program_.AwaitShown("frmSaveFile").Control(IDC_frmSaveFile_Label2);
  Await("patience", [&] { return words.Text() == "The file name is in use. Trying again ..."; });
  reader.close();
  program_.FinishSave();
  ExpectLongSaved(GetParam(), target);
}

TEST_P(SaveFaults, ASourceThatGoesOrGrowsInTheMidstIsSavedAsItWas) {
  const std::string source = InWork("changing.60D");
  const std::string target = InWork("unchanged.60D");
  for (const bool goes : {false, true}) {
    SCOPED_TRACE(goes ? "goes" : "grows");
    CopyTo(kLong, source);
    Prepare(source, target);
    auto pause = program_.CatchSave();
    RunOutside(goes ? "rm drive_c/work/changing.60D" : "printf more >>drive_c/work/changing.60D");
    Await("change", [&] {
      return goes ? !FileExists(source) : Read(source, kLongBlocks * kBlock) == "more";
    });
    pause.reset();
    program_.FinishSave();
    ExpectLongSaved(GetParam(), target);
  }
}

class Cancel : public BothSaves {};
INSTANTIATE_TEST_SUITE_P(Both, Cancel, testing::Bool(), NameOfKind);

TEST_P(Cancel, InTheMidstLeavesNothing) {
  const std::string target = InWork("cancelled.60D");
  constexpr LPARAM kAltIsDown = 1 << 29;
  // What comes to the window that stands still, or to its button.
  const struct {
    const char* name;
    int control;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
  } ways[] = {{"button", IDC_frmSaveFile_cmdCancel, BM_CLICK, 0, 0},
              {"Esc", IDC_frmSaveFile_cmdCancel, WM_KEYDOWN, VK_ESCAPE, 0},
              {"title bar", 0, WM_SYSCOMMAND, SC_CLOSE, 0},
              {"Alt+F4", 0, WM_SYSKEYDOWN, VK_F4, kAltIsDown},
              {"end of session", 0, WM_ENDSESSION, TRUE, 0}};
  for (const auto& [name, control, message, wParam, lParam] : ways) {
    SCOPED_TRACE(name);
    Prepare(kLong, target);
    {
      const auto pause = program_.CatchSave();
      Resize(target, 7);  // Saves that were too fast to be caught have been there.
      const Window save = program_.AwaitShown("frmSaveFile");
      program_.main().Close();  // Takes no notice.
      PostMessageW((control ? save.Control(control) : save).handle(), message, wParam, lParam);
    }
    program_.AwaitGone("frmSaveFile");
    EXPECT_EQ(Read(target).size(), 7u) << "the earlier file stays";
    EXPECT_THAT(Temporaries(), IsEmpty());
    PrintFigure(1, "saves cancelled");
  }
  // The next save starts anew.
  Prepare(kLong, InWork("not cancelled.60D"));
  program_.SaveAndLeave();
  ExpectLongSaved(GetParam(), InWork("not cancelled.60D"));
}

TEST(Kill, LeavesTheSourceAndTheOldTargetOrTheWholeNewOne) {
  const std::string whole = Read(kLong);
  std::mt19937 random(1);
  const int kills = RunRounds(4, [&](int round) {
    const bool someCameras = round % 2 == 0;
    const std::string target = InWork("killed " + std::to_string(round) + ".60D");
    Resize(target, 7);
    {
      const Trimbrook program;
      program.OpenSource(kLong);
      if (someCameras) program.ChooseCameras({1});
      program.ChooseTarget(target);
      const Window percent = program.StartSave().Control(IDC_frmSaveFile_Label3);
      const auto percentage = static_cast<int>(random() % 101);
      Await("progress", [&] { return std::atoi(percent.Text().c_str()) >= percentage; });
      program.Kill();
    }
    if (Read(target, 0, 8).size() != 7) ExpectLongSaved(someCameras, target);
    if (!someCameras) DeleteFileA(target.c_str());
    EXPECT_THAT(Temporaries(), IsEmpty());
  });
  EXPECT_TRUE(Read(kLong) == whole);
  PrintFigure(kills, "kills");
}

}  // namespace
}  // namespace driver
