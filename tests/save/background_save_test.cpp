#include "save/background_save.h"

#include <functional>
#include <optional>

#include "tests/save/save_world.h"

namespace {

/// A job of two blocks that has a message, since the first cannot be read as a whole.
SaveJob AskingJob(SaveWorld& save) {
  save.disk.fault = {};
  save.disk.fault.kind = Fault::Kind::kShortTransfer;
  save.disk.fault.call = 1;
  save.job.firstBlock = 1;
  save.job.lastBlock = 2;
  return save.job;
}

/// Shows a save to its end, as a window does: cancels it once `progress` says so.
SaveEnd Watch(BackgroundSave& save, FakeProgress& progress) {
  while (save.Show(progress))
    if (!progress.GoOn()) save.Cancel();
  return save.Result().end;
}

TEST(BackgroundSave, ShowsAllThatItDoesToTheThreadThatHasTheWindows) {
  SaveWorld save;
  BackgroundSave running(save.world.system, AskingJob(save));
  EXPECT_EQ(Watch(running, save.progress), SaveEnd::kSaved);
  EXPECT_EQ(save.progress.done, 2);
  EXPECT_THAT(save.progress.messages, testing::ElementsAre("Error reading file ..."));
  save.ExpectNothingLeft();
}

/// Each way to stop it while it waits for what it has asked to be answered.
TEST(BackgroundSave, LeavesTheOldFileWhenItIsStopped) {
  const std::function<void(std::optional<BackgroundSave>&)> ways[] = {
      [](auto& save) { save->Cancel(); },
      [](auto& save) { save->End(); },
      [](auto& save) { save.reset(); },
  };
  for (const auto& stop : ways) {
    SaveWorld save;
    std::optional<BackgroundSave> running(std::in_place, save.world.system, AskingJob(save));
    stop(running);
    if (running) EXPECT_EQ(Watch(*running, save.progress), SaveEnd::kCancelled);
    save.ExpectRefusal("");
  }
}

}  // namespace
