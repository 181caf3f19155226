#include <gmock/gmock.h>

#include "driver/files.h"
#include "driver/trimbrook.h"
#include "resources/version.h"

namespace driver {
namespace {

using testing::IsEmpty;

class Save : public testing::Test {
 protected:
  /// The progress window while it saves, or when it is done.
  void ExpectLook(const Window& save, int percent, bool isDone) {
    EXPECT_EQ(save.Text(), TRIMBROOK_NAME_AND_VERSION);
    EXPECT_EQ(save.Control(IDC_frmSaveFile_Label3).Text(), std::to_string(percent) + "%");
    EXPECT_EQ(save.Control(IDC_frmSaveFile_ProgressBar1).Ask(PBM_GETPOS), percent);
    EXPECT_EQ(save.Control(IDC_frmSaveFile_cmdCancel).Text(), isDone ? "Exit" : "Cancel");
    for (const int button : {IDC_frmSaveFile_cmdOpen, IDC_frmSaveFile_cmdOpenFolder})
      EXPECT_EQ(save.Control(button).IsEnabled(), isDone);
    EXPECT_FALSE(program_.main().IsEnabled());
  }
  /// Has the shell open files of a kind with a command that writes their paths down.
  void Associate(const std::string& ending) {
    const std::string command = "cmd /c echo %1>>" + log_;
    DeleteFileA(log_.c_str());
    RegSetValueA(HKEY_LOCAL_MACHINE, ("Software\\Classes\\" + ending).c_str(), REG_SZ, "Logged", 0);
    RegSetValueA(HKEY_LOCAL_MACHINE, "Software\\Classes\\Logged\\shell\\open\\command", REG_SZ,
                 command.c_str(), 0);
  }
  std::string Opened() const { return FileExists(log_) ? Read(log_) : ""; }

  const std::string log_ = InWork("opened.txt");
  Trimbrook program_;
};

TEST_F(Save, WholeBlocksAndNamesOfAnyLettersAreKeptAsTheyAre) {
  const std::string source = InWork("Запись.60D");
  const std::string target = InWork("録画 é.60D");
  CopyTo(Recording("day.60D"), source);
  program_.Prepare(source, target);
  EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text6), target);
  program_.ChooseBlocks(2, 3);
  program_.SaveAndLeave();
  EXPECT_TRUE(HoldsBlocks(target, source, 2, 3));

  // Once more, onto the file that is there now.
  program_.ChooseBlocks(1, 1);
  program_.SaveAndLeave();
  EXPECT_TRUE(HoldsBlocks(target, source, 1, 1));
  EXPECT_THAT(FilesLike(std::string(kProgramFolder) + "WAV*"), IsEmpty());
}

TEST_F(Save, GivesTheBytesThatTheCommandGives) {
  int saves = 0;
  for (const char* name : {"day.60D", "old.60D", "cameras32.60D", "pictures.20d"})
    for (const std::string cameras : {"1", "1-32"}) {
      SCOPED_TRACE(name + (", cameras " + cameras));
      const std::string ending = std::to_string(++saves) + " " + name;
      const std::string byWindow = InWork("window " + ending);
      const std::string byCommand = InWork("command " + ending);
      program_.Prepare(Recording(name), byWindow);
      program_.ChooseBlocks(1, 2);
      program_.ChooseCameras(cameras == "1" ? std::vector{1} : program_.EnabledCameras());
      program_.SaveAndLeave();
      const Program command(kProgramFolder + ("trim_recording.exe " + Recording(name)) + " \"" +
                            byCommand + "\" --blocks 1-2 --cameras " + cameras);
      EXPECT_EQ(command.AwaitEnd(), 0u);
      EXPECT_TRUE(Read(byWindow) == Read(byCommand));
      if (cameras != "1") continue;
      // What was rebuilt, one short block, is opened as any other.
      program_.OpenSource(byWindow);
      EXPECT_THAT((std::vector{program_.First(), program_.Last()}), testing::Each(1));
      EXPECT_EQ(program_.EnabledCameras().front(), 1);
    }
}

// The last block has become shorter since the source was chosen: its message shows the progress.
TEST_F(Save, ShowsHowFarItIsAndTellsABlockThatIsNotWhole) {
  const std::string source = InWork("cut short.60D");
  CopyTo(Recording("day.60D"), source);
  program_.Prepare(source, InWork("cut short saved.60D"));
  Resize(source, 2 * kBlock + 1);
  const Window save = program_.StartSave();
  Await("message", [&] { return program_.ShowsDialog(); });
  ExpectLook(save, 63, false);
  for (const Window& window : {save, program_.main()}) EXPECT_FALSE(window.Ask(WM_QUERYENDSESSION));
  EXPECT_EQ(program_.AnswerMessage(), (Message{"Trimbrook", "Error reading file ..."}));
  program_.AwaitDone();
  ExpectLook(save, 100, true);
  EXPECT_TRUE(save.Ask(WM_QUERYENDSESSION));

  // Both windows go to the one button of the taskbar, and come back.
  PostMessageW(save.handle(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
  Await("minimised windows", [&] { return IsIconic(program_.main().handle()); });
  Await("a key at the window above", [&] {
    // On a busy machine the display may come to minimising them only now.
    const HWND main = program_.main().handle();
    if (IsIconic(main)) PostMessageW(main, WM_SYSCOMMAND, SC_RESTORE, 0);
    RunOutside("xdotool key Escape");
    return !IsWindow(save.handle());
  });
}

TEST_F(Save, CamerasBeyond16AreAskedAbout) {
  program_.Prepare(Recording("cameras32.60D"), InWork("seventeen.60D"));
  const std::string cannot = "Cameras 17 to 32 cannot be kept when only some cameras are selected.";
  program_.ChooseCameras({17, 32});
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3), Refusal(cannot));
  program_.ChooseCameras({1, 17});
  program_.At(IDC_frmTrimbrook_Command3).ClickAndGoOn();
  AwaitFocus(program_.AwaitShown(kDialogClass).Control(IDNO));
  EXPECT_EQ(program_.AnswerMessage(IDNO), Refusal(cannot + " Do you want to continue?"));
  EXPECT_FALSE(program_.FindShown("frmSaveFile"));
  EXPECT_FALSE(FileExists(InWork("seventeen.60D")));
  program_.At(IDC_frmTrimbrook_Command3).ClickAndGoOn();
  program_.AnswerMessage(IDYES);
  program_.AwaitDone();
  CheckLater({"--compare", Recording("cameras32.60D"), "--cameras", "1", InWork("seventeen.60D")});
}

TEST_F(Save, OpenAndOpenFolderHandTheFileToItsProgram) {
  const std::string target = InWork("to open.60D");
  Associate(".60D");

  Resize(InWork("another.60D"), 1);
  program_.Prepare(Recording("day.60D"), target);
  program_.Save().Control(IDC_frmSaveFile_cmdOpen).ClickAndGoOn();
  program_.AwaitGone("frmSaveFile");
  Await("the opened file", [&] { return Opened() == target + "\r\n"; });

  program_.Save().Control(IDC_frmSaveFile_cmdOpenFolder).ClickAndGoOn();
  FileDialog dialog = program_.AwaitFileDialog("Trimbrook");
  EXPECT_TRUE(dialog.Look().starts_with("work, , "));
  dialog.Accept("another.60D");
  program_.AwaitGone("frmSaveFile");
  Await("the chosen file", [&] { return Opened() == target + "\r\n" + InWork("another.60D\r\n"); });

  program_.Save().Control(IDC_frmSaveFile_cmdOpenFolder).ClickAndGoOn();
  program_.AwaitFileDialog("Trimbrook").Cancel();
  program_.AwaitGone("frmSaveFile");
}

TEST_F(Save, TheGuideIsOpenedByF1) {
  const std::string guide = std::string(kProgramFolder) + "user-guide.html";
  Associate(".html");
  DeleteFileA(guide.c_str());
  PressUntil("message", program_.main(), {VK_F1}, [&] { return program_.ShowsDialog(); });
  EXPECT_EQ(program_.AnswerMessage(), Refusal("The user guide cannot be opened: " + guide));
  Resize(guide, 1);
  PressUntil("guide", program_.main(), {VK_F1}, [&] { return Opened() == guide + "\r\n"; });
}

TEST_F(Save, KeysAloneOpenSaveAndLeave) {
  const auto asks = [&] { return program_.ShowsDialog(); };
  PressUntil("file dialog", program_.main(), {VK_CONTROL, 'O'}, asks);
  program_.AwaitFileDialog(kSourceDialog).Accept(Recording("day.60D"));
  program_.AwaitSource(Recording("day.60D"));
  const auto ticks = [&] { return program_.At(IDC_frmTrimbrook_Check1, 31).IsTicked(); };
  program_.Focus(IDC_frmTrimbrook_Command1);
  PressUntil("no camera", program_.main(), {VK_CONTROL, VK_SHIFT, 'A'}, [&] { return !ticks(); });
  // In a text the key is the text's.
  program_.Focus(IDC_frmTrimbrook_Text1);
  program_.At(IDC_frmTrimbrook_Text1).Ask(EM_SETSEL, 0, 0);
  PressUntil("selection", program_.main(), {VK_CONTROL, 'A'},
             [&] { return HIWORD(program_.At(IDC_frmTrimbrook_Text1).Ask(EM_GETSEL)) > 0; });
  EXPECT_FALSE(ticks());
  program_.Focus(IDC_frmTrimbrook_Command1);
  PressUntil("all cameras", program_.main(), {VK_CONTROL, 'A'}, ticks);

  PressUntil("target dialog", program_.main(), {VK_CONTROL, 'T'}, asks);
  program_.AwaitFileDialog(kTargetDialog).Cancel();
  PressUntil("target dialog", program_.main(), {VK_CONTROL, 'S'}, asks);
  program_.AwaitFileDialog(kTargetDialog).Accept(InWork("keys.60D"));
  const Window save = program_.AwaitShown("frmSaveFile");
  program_.AwaitDone();
  AwaitFocus(save.Control(IDC_frmSaveFile_cmdOpen));
  PressUntil("end of the save window", save, {VK_ESCAPE}, [&] { return !save.IsShown(); });
}

// What goes on with the press on "Save File" is not for the window that it has opened.
TEST_F(Save, OnlyANewPressCancelsIt) {
  const struct {
    BYTE first, second;  // 0 for the mouse.
    bool cancels;
  } cases[] = {{VK_RETURN, VK_RETURN, false}, {0, 0, false}, {VK_RETURN, VK_ESCAPE, true}};
  program_.Prepare(Recording("long.60D"), InWork("pressed.60D"));
  const Window button = program_.At(IDC_frmTrimbrook_Command3);
  for (const auto& [first, second, cancels] : cases) {
    SCOPED_TRACE(second);
    BringToFront(program_.main());
    program_.Focus(IDC_frmTrimbrook_Command3);
    AwaitFocus(button);
    const DWORD start = GetTickCount();
    first == 0 ? DoubleClickOn(button) : TapKey(first, start);
    const Window save = program_.AwaitShown("frmSaveFile");
    AwaitFocus(save.Control(IDC_frmSaveFile_cmdCancel));
    if (second != 0) TapKey(second, cancels ? GetTickCount() : start + GetDoubleClickTime() / 2);
    const Window status = save.Control(IDC_frmSaveFile_Label2);
    Await("end", [&] { return !save.IsShown() || status.Text() == kDone; });
    EXPECT_EQ(save.IsShown(), !cancels);
    if (save.IsShown()) program_.LeaveSave();
  }
}

}  // namespace
}  // namespace driver
