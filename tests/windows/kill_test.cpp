#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "driver/await.h"
#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"
#include "tests/windows/rounds.h"

namespace driver {
namespace {

const std::string kTarget = InWork("killed.60D");

/// Ends a program in the midst of a save of a long recording, about when it shows this percentage.
void KillSave(bool someCameras, int percentage) {
  DeleteFileA(kTarget.c_str());
  const Trimbrook program;
  program.OpenSource(Recording("long.60D"));
  if (someCameras) program.ChooseCameras({1});
  program.ChooseTarget(kTarget);
  const Window percent = program.StartSave().Control(IDC_frmSaveFile_Label3);
  Await("progress", [&] { return std::atoi(percent.Text().c_str()) >= percentage; });
  program.Kill();
}

TEST(Kill, HarmsNoSourceAndLeavesNoHalfTarget) {
  const std::string source = Recording("long.60D");
  const std::string whole = Read(source);
  const std::string temporaries = std::string(kProgramFolder) + "WAV*.tmp";
  std::mt19937 random(1);
  Rounds rounds(4);
  while (rounds.Next()) {
    const bool someCameras = rounds.begun() % 2 == 0;
    // One that an earlier round has left is in nobody's way.
    const std::vector<std::string> leftOver = FilesLike(temporaries);
    for (std::size_t i = 1; i < leftOver.size(); ++i)
      DeleteFileA((kProgramFolder + leftOver[i]).c_str());
    KillSave(someCameras, static_cast<int>(random() % 101));
    if (!FileExists(kTarget)) continue;
    const std::string kept = InWork("killed " + std::to_string(rounds.begun()) + ".60D");
    if (someCameras) {
      CopyTo(kTarget, kept);
      CheckLater({"--compare", source, "--cameras", "1", kept});
    } else {
      EXPECT_TRUE(Read(kTarget) == whole);
    }
  }
  EXPECT_TRUE(Read(source) == whole);
  PrintFigure(rounds.begun(), "kills");
}

}  // namespace
}  // namespace driver
