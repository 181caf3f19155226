#include "save/background_save.h"

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

TEST(BackgroundSave, ShowsAllThatItDoesToTheThreadThatHasTheWindows) {
  SaveWorld save;
  BackgroundSave running(save.world.system, AskingJob(save));
  EXPECT_EQ(running.Watch(save.progress).end, SaveEnd::kSaved);
  EXPECT_EQ(save.progress.done, 2);
  EXPECT_THAT(save.progress.messages, testing::ElementsAre("Error reading file ..."));
  save.ExpectNothingLeft();
}

/// What is pressed before the file takes its name counts, however fast the save is.
TEST(BackgroundSave, IsCancelledAfterItsLastBlock) {
  SaveWorld save;
  save.progress.cancelBefore = 3;
  save.job = AskingJob(save);
  save.disk.fault = {};
  EXPECT_EQ(BackgroundSave(save.world.system, save.job).Watch(save.progress).end,
            SaveEnd::kCancelled);
  save.ExpectRefusal("");
}

/// The session ends, or the window is gone, while a message waits for its answer.
TEST(BackgroundSave, LeavesTheOldFileWhenItIsEnded) {
  for (const bool isWatched : {false, true}) {
    SaveWorld save;
    {
      BackgroundSave running(save.world.system, AskingJob(save));
      if (isWatched) {
        running.End();
        EXPECT_EQ(running.Watch(save.progress).end, SaveEnd::kCancelled);
      }
    }
    save.ExpectRefusal("");
  }
}

}  // namespace
