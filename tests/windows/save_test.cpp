#include <gmock/gmock.h>

#include <set>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/input.h"
#include "driver/trimbrook.h"

namespace driver {
namespace {

using testing::IsEmpty;

class Save : public testing::Test {
 protected:
  /// Opens a recording and chooses a target.
  void Prepare(const std::string& source, const std::string& target) {
    program_.OpenSource(Recording(source));
    program_.ChooseTarget(target);
  }
  void ExpectWorkingLook(const Window& save) {
    EXPECT_EQ(save.Text(), "Trimbrook 4.0");
    EXPECT_EQ(save.Control(IDC_frmSaveFile_cmdCancel).Text(), "Cancel");
    EXPECT_FALSE(save.Control(IDC_frmSaveFile_cmdOpen).IsEnabled());
    EXPECT_FALSE(save.Control(IDC_frmSaveFile_cmdOpenFolder).IsEnabled());
    EXPECT_FALSE(program_.main().IsEnabled());
  }
  void ExpectFinishedLook(const Window& save) {
    EXPECT_EQ(save.Control(IDC_frmSaveFile_Label3).Text(), "100%");
    EXPECT_EQ(save.Control(IDC_frmSaveFile_ProgressBar1).Ask(PBM_GETPOS), 100);
    EXPECT_EQ(save.Control(IDC_frmSaveFile_cmdCancel).Text(), "Exit");
    EXPECT_TRUE(save.Control(IDC_frmSaveFile_cmdOpen).IsEnabled());
    EXPECT_TRUE(save.Control(IDC_frmSaveFile_cmdOpenFolder).IsEnabled());
  }
  /// The percentages that show during one save. The program answers once per block, so that a
  /// question that waits meanwhile sees each; one that comes late misses some.
  std::set<std::string> PercentagesOfOneSave() {
    const Window save = program_.StartSave();
    const Window percent = save.Control(IDC_frmSaveFile_Label3);
    const Window status = save.Control(IDC_frmSaveFile_Label2);
    std::set<std::string> seen;
    while (seen.count("100%") == 0) seen.insert(percent.Text());
    Await(kDone, [&] { return status.Text() == kDone; });
    program_.LeaveSave();
    return seen;
  }
  void ExpectPercentages(const std::set<std::string>& expected) {
    std::set<std::string> seen;
    for (int attempt = 0; attempt < 20 && seen != expected; ++attempt)
      seen.merge(PercentagesOfOneSave());
    EXPECT_EQ(seen, expected);
  }

  Trimbrook program_;
};

TEST_F(Save, WholeBlocksAreCopiedAsTheyAre) {
  Prepare("day.60D", InWork("blocks.60D"));
  program_.ChooseBlocks(2, 3);
  ExpectFinishedLook(program_.Save());
  program_.LeaveSave();
  EXPECT_TRUE(HoldsBlocks(InWork("blocks.60D"), Recording("day.60D"), 2, 3));
  EXPECT_EQ(GetFileAttributesA(InWork("blocks.60D").c_str()) & FILE_ATTRIBUTE_TEMPORARY, 0u);

  // Once more, onto the file that is there now.
  program_.ChooseBlocks(1, 1);
  ExpectWorkingLook(program_.StartSave());
  const Window status = program_.AwaitShown("frmSaveFile").Control(IDC_frmSaveFile_Label2);
  Await(kDone, [&] { return status.Text() == kDone; });
  program_.LeaveSave();
  EXPECT_TRUE(HoldsBlocks(InWork("blocks.60D"), Recording("day.60D"), 1, 1));
  EXPECT_THAT(FilesLike(std::string(kProgramFolder) + "WAV*"), IsEmpty());
}

TEST_F(Save, ProgressOfBlocksShowsEachBlock) {
  Prepare("day.60D", InWork("progress.60D"));
  ExpectPercentages({"0%", "32%", "63%", "95%", "100%"});
}

TEST_F(Save, ProgressOfChosenCamerasShowsEachBlock) {
  Prepare("day.60D", InWork("progress.60D"));
  program_.ChooseCameras({1});
  ExpectPercentages({"0%", "32%", "65%", "97%", "100%"});
}

TEST_F(Save, OnlyTheChosenCamerasAreKept) {
  const struct {
    const char *source, *target, *cameras, *blocks;
    std::vector<int> chosen;
    int first, last;
  } cases[] = {
      {"day.60D", "one camera.60D", "2", "1-3", {2}, 1, 3},
      {"day.60D", "two cameras.60D", "1,3", "2-3", {1, 3}, 2, 3},
      {"pictures.20d", "pictures.20D", "1", "1-2", {1}, 1, 2},
      {"cameras32.60D", "of 32.60D", "1,2", "1-2", {1, 2}, 1, 2},
  };
  for (const auto& c : cases) {
    Prepare(c.source, InWork(c.target));
    program_.ChooseCameras(c.chosen);
    program_.ChooseBlocks(c.first, c.last);
    ExpectFinishedLook(program_.Save());
    program_.LeaveSave();
    CheckLater({"--compare", Recording(c.source), "--cameras", c.cameras, "--blocks", c.blocks,
                InWork(c.target)});
  }
}

TEST_F(Save, CamerasBeyond16AreAskedAbout) {
  Prepare("cameras32.60D", InWork("seventeen.60D"));
  program_.ChooseCameras({1, 17});
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3, IDNO),
            Refusal("Cameras 17 to 32 cannot be kept when only some cameras are selected. Do you "
                    "want to continue?"));
  EXPECT_FALSE(program_.FindShown("frmSaveFile"));
  EXPECT_FALSE(FileExists(InWork("seventeen.60D")));
}

TEST_F(Save, TheEndOfTheSessionCancelsIt) {
  Prepare("long.60D", InWork("session.60D"));
  const Window save = program_.StartSave();
  const auto temporary = [] { return FilesLike(std::string(kProgramFolder) + "WAV*"); };
  Await("temporary file", [&] { return !temporary().empty(); });
  EXPECT_EQ(save.Ask(WM_QUERYENDSESSION), TRUE);
  Await("no temporary file", [&] { return temporary().empty(); });
  EXPECT_FALSE(FileExists(InWork("session.60D")));
}

TEST_F(Save, OpenAndOpenFolderHandTheFileToItsProgram) {
  const std::string log = InWork("opened.txt");
  const std::string target = InWork("to open.60D");
  const std::string command = "\"" + InWork("log_argument.exe") + "\" \"" + log + "\" \"%1\"";
  RegSetValueA(HKEY_LOCAL_MACHINE, "Software\\Classes\\.60D", REG_SZ, "Recording", 0);
  RegSetValueA(HKEY_LOCAL_MACHINE, "Software\\Classes\\Recording\\shell\\open\\command", REG_SZ,
               command.c_str(), 0);
  const auto opened = [&] { return FileExists(log) ? Read(log) : ""; };

  MakeFile(InWork("another.60D"), 1);
  Prepare("day.60D", target);
  program_.Save().Control(IDC_frmSaveFile_cmdOpen).ClickAndGoOn();
  program_.AwaitGone("frmSaveFile");
  Await("the opened file", [&] { return opened() == target + "\r\n"; });

  program_.Save().Control(IDC_frmSaveFile_cmdOpenFolder).ClickAndGoOn();
  FileDialog dialog = program_.AwaitFileDialog("Trimbrook");
  EXPECT_EQ(dialog.Folder(), "work");
  dialog.Accept("another.60D");
  program_.AwaitGone("frmSaveFile");
  Await("the chosen file", [&] { return opened() == target + "\r\n" + InWork("another.60D\r\n"); });

  program_.Save().Control(IDC_frmSaveFile_cmdOpenFolder).ClickAndGoOn();
  program_.AwaitFileDialog("Trimbrook").Cancel();
  program_.AwaitGone("frmSaveFile");
}

TEST_F(Save, NamesMayHaveAnyLetters) {
  const std::string source = InWork("\xD0\x97\xD0\xB0\xD0\xBF\xD0\xB8\xD1\x81\xD1\x8C.60D");
  const std::string target = InWork("\xE9\x8C\xB2\xE7\x94\xBB \xC3\xA9.60D");
  CopyTo(Recording("day.60D"), source);
  program_.OpenSource(source);
  program_.ChooseTarget(target);
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text6), target);
  program_.Save();
  program_.LeaveSave();
  EXPECT_TRUE(HoldsBlocks(target, source, 1, 3));
  program_.ChooseCameras({2});
  program_.Save();
  program_.LeaveSave();
  CheckLater({"--compare", Recording("day.60D"), "--cameras", "2", target});
}

TEST_F(Save, KeysAloneSaveAndLeave) {
  Prepare("day.60D", InWork("keys.60D"));
  BringToFront(program_.main());
  PressTogether({VK_CONTROL, 'S'});
  const Window save = program_.AwaitShown("frmSaveFile");
  const Window exit = save.Control(IDC_frmSaveFile_cmdCancel);
  Await("end of the save", [&] { return exit.Text() == "Exit"; });
  BringToFront(save);
  EXPECT_EQ(FocusOf(save).handle(), save.Control(IDC_frmSaveFile_cmdOpen).handle());
  PressTogether({VK_ESCAPE});
  program_.AwaitGone("frmSaveFile");
}

}  // namespace
}  // namespace driver
