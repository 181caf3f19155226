#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <random>

#include "attacks/windows/rounds.h"
#include "driver/await.h"
#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"

namespace driver {
namespace {

const std::string kTemporaries = std::string(kProgramFolder) + "WAV*.tmp";

/// A program that is ended in the midst of saves of a long recording, and what it left behind.
class Kill : public testing::Test {
 protected:
  Kill() : whole_(Read(source_)) {}

  /// Ends a save about when it shows this percentage.
  void KillSave(bool someCameras, int percentage) {
    DeleteFileA(target_.c_str());
    const Trimbrook program;
    program.OpenSource(source_);
    if (someCameras) program.ChooseCameras({1});
    program.ChooseTarget(target_);
    const Window percent = program.StartSave().Control(IDC_frmSaveFile_Label3);
    Await("progress", [&] { return std::atoi(percent.Text().c_str()) >= percentage; });
    program.Kill();
  }

  const std::string source_ = Recording("long.60D");
  const std::string target_ = InWork("killed.60D");
  const std::string whole_;
};

TEST_F(Kill, HarmsNoSourceAndLeavesNoHalfTarget) {
  std::mt19937 random(1);
  Rounds rounds(4);
  int partial = 0;
  std::string leftOver;
  while (rounds.Next()) {
    const bool someCameras = rounds.begun() % 2 == 0;
    KillSave(someCameras, static_cast<int>(random() % 101));
    if (someCameras)
      partial += FileExists(target_) ? 1 : 0;
    else
      EXPECT_TRUE(!FileExists(target_) || Read(target_) == whole_);
    const std::vector<std::string> temporaries = FilesLike(kTemporaries);
    if (!temporaries.empty()) leftOver = kProgramFolder + temporaries.front();
    for (const std::string& name : temporaries)
      if (kProgramFolder + name != leftOver) DeleteFileA((kProgramFolder + name).c_str());
  }
  EXPECT_TRUE(Read(source_) == whole_);
  PrintFigure(rounds.begun(), "kills");
  PrintFigure(partial, "rebuilt files left as far as they were");

  // What an earlier run has left is in nobody's way.
  const Trimbrook program;
  program.OpenSource(Recording("day.60D"));
  program.ChooseTarget(InWork("after.60D"));
  program.Save();
  program.LeaveSave();
  EXPECT_TRUE(HoldsBlocks(InWork("after.60D"), Recording("day.60D"), 1, 3));
  EXPECT_TRUE(leftOver.empty() || FileExists(leftOver));
}

}  // namespace
}  // namespace driver
