#include <gmock/gmock.h>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/input.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"

namespace driver {
namespace {

using testing::IsEmpty;

void PressInFront(const Window& save, std::initializer_list<BYTE> keys) {
  BringToFront(save);
  PressTogether(keys);
}

const struct Way {
  const char* name;
  void (*cancel)(const Window& save);
} kWays[] = {
    {"Button", [](const Window& save) { save.Control(IDC_frmSaveFile_cmdCancel).ClickAndGoOn(); }},
    {"TitleBar",
     [](const Window& save) { PostMessageW(save.handle(), WM_SYSCOMMAND, SC_CLOSE, 0); }},
    {"Escape", [](const Window& save) { PressInFront(save, {VK_ESCAPE}); }},
    {"AltF4",
     [](const Window& save) {
       PressInFront(save, {VK_MENU, VK_F4});
     }},
};

TEST(Cancel, InTheMidstLeavesNothing) {
  const Trimbrook program;
  const std::string target = InWork("cancelled.60D");
  for (const bool someCameras : {false, true})
    for (const Way& way : kWays) {
      SCOPED_TRACE(way.name);
      program.OpenSource(Recording("long.60D"));
      if (someCameras) program.ChooseCameras({1});
      program.ChooseTarget(target);
      const Window save = program.StartSave();
      const Window percent = save.Control(IDC_frmSaveFile_Label3);
      Await("progress", [&] { return percent.Text() != "0%"; });
      EXPECT_EQ(FocusOf(save).handle(), save.Control(IDC_frmSaveFile_cmdCancel).handle());
      program.main().Close();  // Takes no notice.
      way.cancel(save);
      program.AwaitGone("frmSaveFile");
      Await("main window", [&] { return program.main().IsEnabled(); });
      EXPECT_FALSE(FileExists(target));
      EXPECT_THAT(FilesLike(std::string(kProgramFolder) + "WAV*"), IsEmpty());
      PrintFigure(1, "saves cancelled");

      program.OpenSource(Recording("day.60D"));
      program.ChooseCameras({1, 2, 3});
      program.ChooseBlocks(2, 3);
      program.ChooseTarget(target);
      program.Save();
      program.LeaveSave();
      EXPECT_TRUE(HoldsBlocks(target, Recording("day.60D"), 2, 3));
      DeleteFileA(target.c_str());
    }
}

TEST(Cancel, BeforeTheStartTouchesNothing) {
  const Trimbrook program;
  MakeFile(InWork("kept.60D"), 7);
  program.OpenSource(Recording("long.60D"));
  program.ChooseTarget(InWork("kept.60D"));
  program.StartSave().Control(IDC_frmSaveFile_cmdCancel).ClickAndGoOn();
  program.AwaitGone("frmSaveFile");
  Await("main window", [&] { return program.main().IsEnabled(); });
  EXPECT_EQ(Read(InWork("kept.60D"), 0, 8).size(), 7u);
}

}  // namespace
}  // namespace driver
