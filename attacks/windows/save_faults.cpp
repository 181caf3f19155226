#include <gmock/gmock.h>

#include <fstream>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"

namespace driver {
namespace {

using testing::IsEmpty;

const Message kReadError = {"Trimbrook", "Error reading file ..."};
const Message kWriteError = {"Trimbrook", "Error writing file ..."};

/// Has the system below Wine change something in the prefix, without asking Windows.
void RunOutside(const std::string& command) {
  std::string line = "Z:\\bin\\sh -c \"cd \\\"$WINEPREFIX\\\" && " + command + "\"";
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process))
    throw std::runtime_error("Cannot run " + command);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

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
  FaultsOfBoth() { CopyTo(Recording("day.60D"), InWork("source.60D")); }
  void Prepare(const std::string& source, const std::string& target) {
    program_.OpenSource(source);
    if (GetParam()) program_.ChooseCameras({1, 2});
    program_.ChooseTarget(target);
  }
  /// Saves, and checks that the save is told to have failed and leaves nothing behind.
  void ExpectFailedSave(const Message& message) {
    EXPECT_EQ(program_.FailedSave(), message);
    const Window save = program_.AwaitShown("frmSaveFile");
    EXPECT_FALSE(program_.ShowsDialog());
    EXPECT_EQ(save.Control(IDC_frmSaveFile_Label2).Text(), "");
    EXPECT_EQ(save.Control(IDC_frmSaveFile_cmdCancel).Text(), "Cancel");
    EXPECT_FALSE(save.Control(IDC_frmSaveFile_cmdOpen).IsEnabled());
    program_.LeaveSave();
    EXPECT_THAT(FilesLike(std::string(kProgramFolder) + "WAV*"), IsEmpty());
    PrintFigure(1, "failed saves told");
  }

  Trimbrook program_;
};

INSTANTIATE_TEST_SUITE_P(SaveFaults, FaultsOfBoth, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "ChosenCameras" : "Blocks"; });

TEST_P(FaultsOfBoth, AnotherVolumeHoldsTheFileUntilItIsFull) {
  if (!FileExists("F:\\")) GTEST_SKIP() << "no small disk: mounting one takes root";
  const std::string source = Recording("day.60D");
  Prepare(source, "F:\\saved.60D");
  program_.Save();
  program_.LeaveSave();
  if (!GetParam()) {
    EXPECT_TRUE(HoldsBlocks("F:\\saved.60D", source, 1, 3));
  }

  // The space was enough when the target was chosen; then it lasts for the first block only.
  program_.ChooseTarget("F:\\saved.60D");
  ULARGE_INTEGER free = {};
  DeleteFileA("F:\\saved.60D");
  GetDiskFreeSpaceExA("F:\\", &free, nullptr, nullptr);
  // Real bytes: a file that is only as long as that would take no room.
  Append("F:\\filler", std::string(static_cast<std::size_t>(free.QuadPart - kBlock * 3 / 2), '\1'));
  ExpectFailedSave(kWriteError);
  EXPECT_FALSE(FileExists("F:\\saved.60D"));
  DeleteFileA("F:\\filler");
}

TEST_P(FaultsOfBoth, TheSourceCannotBeItsOwnTarget) {
  CreateHardLinkA(InWork("hard link.60D").c_str(), InWork("source.60D").c_str(), nullptr);
  const std::string before = Read(InWork("source.60D"));
  for (const char* name : {"source.60D", "SOURCE.60d", "hard link.60D", "link.60D"}) {
    SCOPED_TRACE(name);
    Prepare(InWork("source.60D"), InWork(name));
    ExpectFailedSave(kWriteError);
    EXPECT_TRUE(FileExists(InWork(name)));
    EXPECT_TRUE(Read(InWork("source.60D")) == before);
  }
}

TEST_P(FaultsOfBoth, AnOldTargetThatCannotBeDeletedStays) {
  const std::string readOnly = InWork("read-only.60D");
  const std::string open = InWork("playing.60D");
  SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
  for (const std::string& target : {readOnly, open}) MakeFile(target, 7);
  SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
  const std::ifstream player(open, std::ios::binary);
  for (const std::string& target : {readOnly, open}) {
    Prepare(InWork("source.60D"), target);
    ExpectFailedSave(kWriteError);
    EXPECT_EQ(Read(target).size(), 7u);
  }
}

TEST_P(FaultsOfBoth, ASourceThatHasGoneIsTold) {
  const std::string source = InWork("going.60D");
  const std::string target = InWork("kept.60D");
  CopyTo(InWork("source.60D"), source);
  MakeFile(target, 7);
  Prepare(source, target);
  DeleteFileA(source.c_str());
  ExpectFailedSave(kReadError);
  EXPECT_EQ(Read(target).size(), 7u);
}

TEST_P(FaultsOfBoth, AReadOnlyVolumeIsTold) {
  if (!FileExists("G:\\")) GTEST_SKIP() << "no read-only disk: mounting one takes root";
  Prepare(InWork("source.60D"), "G:\\saved.60D");
  ExpectFailedSave(kWriteError);
  EXPECT_FALSE(FileExists("G:\\saved.60D"));
}

TEST_P(FaultsOfBoth, DrivesThatVanishAreTold) {
  {
    const PassingDrive drive;
    Prepare("H:\\source.60D", InWork("from H.60D"));
  }
  ExpectFailedSave(kReadError);
  EXPECT_FALSE(FileExists(InWork("from H.60D")));
  {
    const PassingDrive drive;
    Prepare(InWork("source.60D"), "H:\\onto H.60D");
  }
  ExpectFailedSave(kWriteError);
  EXPECT_FALSE(FileExists(InWork("onto H.60D")));
}

TEST_P(FaultsOfBoth, ASourceThatGoesOrGrowsInTheMidstIsSavedAsItWas) {
  const std::string source = InWork("changing.60D");
  const std::string target = InWork("unchanged.60D");
  for (const bool goes : {false, true}) {
    SCOPED_TRACE(goes ? "goes" : "grows");
    CopyTo(Recording("long.60D"), source);
    Prepare(source, target);
    if (GetParam()) program_.ChooseCameras({1});
    auto [save, pause] = program_.CatchSave();
    RunOutside(goes ? "rm drive_c/work/changing.60D" : "printf more >>drive_c/work/changing.60D");
    Await("change", [&] {
      return goes ? !FileExists(source) : Read(source, kLongBlocks * kBlock) == "more";
    });
    pause.reset();
    program_.AwaitDone(save);
    program_.LeaveSave();
    if (GetParam())
      CheckLater({"--compare", Recording("long.60D"), "--cameras", "1", target});
    else
      EXPECT_TRUE(Read(target) == Read(Recording("long.60D")));
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
  EXPECT_EQ(program.FailedSave().text,
            "The selected cameras have no images in the selected time range!");
  EXPECT_FALSE(FileExists(InWork("nothing.60D")));
  // All blocks have been gone through; what is left of the bar is for the finished file.
  EXPECT_EQ(program.AwaitShown("frmSaveFile").Control(IDC_frmSaveFile_Label3).Text(), "97%");
  program.LeaveSave();
}

}  // namespace
}  // namespace driver
