#include <gmock/gmock.h>

#include <fstream>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/outside.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"

namespace driver {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Message kReadError = {"Trimbrook", "Error reading file ..."};
const Message kWriteError = {"Trimbrook", "Error writing file ..."};

/// Drive H, which is the folder of work as long as this lives.
class PassingDrive {
 public:
  PassingDrive() {
    RunOutside("ln -s ../drive_c/work dosdevices/h:");
    Await("drive H", [] { return FileExists("H:\\source.60D"); });
  }
  ~PassingDrive() {
    RunOutside("rm dosdevices/h:");
    Await("no drive H", [] { return !FileExists("H:\\source.60D"); });
  }
  PassingDrive(const PassingDrive&) = delete;
  PassingDrive& operator=(const PassingDrive&) = delete;
};

/// Each fault meets both kinds of save: whole blocks, and chosen cameras only.
class FaultsOfBoth : public testing::TestWithParam<bool> {
 protected:
  FaultsOfBoth() { CopyTo(Recording("day.60D"), source_); }
  void Prepare(const std::string& source, const std::string& target) {
    program_.Prepare(source, target);
    if (GetParam()) program_.ChooseCameras({1});
  }
  /// The save that is under way is told to have failed and leaves nothing behind.
  void ExpectFailure(const Message& message) {
    EXPECT_EQ(program_.AnswerMessage(), message);
    program_.Settle();
    const Window save = program_.AwaitShown("frmSaveFile");
    EXPECT_FALSE(program_.ShowsDialog());
    EXPECT_EQ(save.Control(IDC_frmSaveFile_Label2).Text(), "");
    EXPECT_EQ(save.Control(IDC_frmSaveFile_cmdCancel).Text(), "Cancel");
    EXPECT_FALSE(save.Control(IDC_frmSaveFile_cmdOpen).IsEnabled());
    program_.LeaveSave();
    for (const char* folder : {kProgramFolder, kWork})
      EXPECT_THAT(FilesLike(folder + std::string("WAV*")), IsEmpty());
    PrintFigure(1, "failed saves told");
  }
  void ExpectLongSaved(const std::string& target) {
    if (GetParam())
      CheckLater({"--compare", Recording("long.60D"), "--cameras", "1", target});
    else
      EXPECT_TRUE(HoldsBlocks(target, Recording("long.60D"), 1, kLongBlocks));
  }

  const std::string source_ = InWork("source.60D");
  Trimbrook program_;
};

INSTANTIATE_TEST_SUITE_P(SaveFaults, FaultsOfBoth, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "ChosenCameras" : "Blocks"; });

TEST_P(FaultsOfBoth, ADiskThatGetsFullIsTold) {
  if (!FileExists("F:\\")) GTEST_SKIP() << "no small disk: mounting one takes root";
  Prepare(Recording("long.60D"), "F:\\saved.60D");
  {
    const auto [save, pause] = program_.CatchSave();
    RunOutside("cat /dev/zero >dosdevices/f:/filler");
    Await("full disk", [] {
      ULARGE_INTEGER free = {};
      return GetDiskFreeSpaceExA("F:\\", &free, nullptr, nullptr) && free.QuadPart == 0;
    });
  }
  ExpectFailure(kWriteError);
  EXPECT_THAT(FilesLike("F:\\*"), ElementsAre("filler"));
  DeleteFileA("F:\\filler");
  program_.SaveAndLeave();
  CopyTo("F:\\saved.60D", InWork("from F.60D"));
  DeleteFileA("F:\\saved.60D");
  ExpectLongSaved(InWork("from F.60D"));
}

TEST_P(FaultsOfBoth, WhatCannotBeReplacedStays) {
  CreateHardLinkA(InWork("hard link.60D").c_str(), source_.c_str(), nullptr);
  const std::string readOnly = InWork("read-only.60D");
  const std::string open = InWork("playing.60D");
  SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
  for (const std::string& target : {readOnly, open}) MakeFile(target, 7);
  SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
  const std::ifstream player(open, std::ios::binary);
  for (const std::string& target : {source_, InWork("SOURCE.60d"), InWork("hard link.60D"),
                                    InWork("link.60D"), readOnly, open}) {
    SCOPED_TRACE(target);
    const std::string before = Read(target);
    Prepare(source_, target);
    program_.StartSave();
    ExpectFailure(kWriteError);
    EXPECT_TRUE(Read(target) == before);
  }
  if (!FileExists("G:\\")) GTEST_SKIP() << "no read-only disk: mounting one takes root";
  Prepare(source_, "G:\\saved.60D");
  program_.StartSave();
  ExpectFailure(kWriteError);
}

TEST_P(FaultsOfBoth, DrivesThatVanishAreTold) {
  const std::string target = InWork("from H.60D");
  MakeFile(target, 7);
  {
    const PassingDrive drive;
    Prepare("H:\\source.60D", target);
  }
  program_.StartSave();
  ExpectFailure(kReadError);
  EXPECT_EQ(Read(target).size(), 7u);
  {
    const PassingDrive drive;
    Prepare(source_, "H:\\onto H.60D");
  }
  // A drive that is not there has no space.
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3),
            Refusal("There is not enough space on the disk for the selected file!"));
}

TEST_P(FaultsOfBoth, ASourceThatGoesOrGrowsInTheMidstIsSavedAsItWas) {
  const std::string source = InWork("changing.60D");
  const std::string target = InWork("unchanged.60D");
  for (const bool goes : {false, true}) {
    SCOPED_TRACE(goes ? "goes" : "grows");
    CopyTo(Recording("long.60D"), source);
    Prepare(source, target);
    auto [save, pause] = program_.CatchSave();
    RunOutside(goes ? "rm drive_c/work/changing.60D" : "printf more >>drive_c/work/changing.60D");
    Await("change", [&] {
      return goes ? !FileExists(source) : Read(source, kLongBlocks * kBlock) == "more";
    });
    pause.reset();
    program_.AwaitDone(save);
    program_.LeaveSave();
    ExpectLongSaved(target);
  }
}

TEST(SaveFaults, CamerasWithoutImagesMakeNoFile) {
  const Trimbrook program;
  const std::string source = InWork("masks.60D");
  CopyTo(Recording("day.60D"), source);
  // The blocks claim a camera 5, of which there is no image.
  for (int block = 0; block < 3; ++block) Patch(source, block * kBlock + 0x1FFC00 + 19, "\x17");
  program.OpenSource(source);
  program.ChooseCameras({5});
  program.ChooseTarget(InWork("nothing.60D"));
  const Window save = program.StartSave();
  EXPECT_EQ(program.AnswerMessage(),
            Refusal("The selected cameras have no images in the selected time range!"));
  EXPECT_FALSE(FileExists(InWork("nothing.60D")));
  // All blocks have been gone through; what is left of the bar is for the finished file.
  EXPECT_EQ(save.Control(IDC_frmSaveFile_Label3).Text(), "97%");
  program.LeaveSave();
}

}  // namespace
}  // namespace driver
