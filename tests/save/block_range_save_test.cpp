#include "tests/save/save_world.h"
#include "tests/support/recording_builder.h"

namespace {

using ::testing::ElementsAre;

/// Four blocks that differ from each other all over, and a part of a fifth.
const std::string& Noise() {
  static const std::string noise = Picture(4 * kBlock + 700);
  return noise;
}

/// A save of whole blocks from a source of `size` bytes.
struct SaveOfBlocks : SaveWorld {
  explicit SaveOfBlocks(std::size_t size = 4 * kBlock, const Fault& fault = {})
      : SaveWorld(0x30, Noise().substr(0, size), fault) {}
  SaveOutcome Run(int first, int last) { return SaveWorld::Run(first, last, kWholeBlocks); }
};

TEST(SaveBlockRange, CopiesTheBlocksThroughATemporaryFileAndShowsEach) {
  SaveOfBlocks save;
  std::vector<std::string> during;
  save.progress.onMessages = [&] {
    EXPECT_FALSE(save.world.disk.HasFile(kTarget));
    during = save.world.disk.FilesBelow("C:\\Trimbrook");
  };
  EXPECT_EQ(save.Run(2, 4), SaveOutcome::kSaved);
  EXPECT_THAT(during, ElementsAre(kProgram, ::testing::MatchesRegex(".*WAV.*\\.tmp")));
  EXPECT_TRUE(save.TargetIsBlocks(2, 3));
  EXPECT_FALSE(save.world.disk.IsTemporary(kTarget));
  EXPECT_THAT(save.progress.log,
              ElementsAre("yield", "1 of 3", "yield", "2 of 3", "yield", "3 of 3", "yield",
                          "hourglass", "pointer", "finished"));
  save.ExpectNothingLeft();
  save.ExpectNoTemporary();
}

TEST(SaveBlockRange, TellsOfAPartialBlockAndFillsItUp) {
  SaveOfBlocks save(2 * kBlock + 700);
  EXPECT_EQ(save.Run(1, 3), SaveOutcome::kSaved);
  EXPECT_EQ(save.world.disk.Bytes(kTarget),
            save.source + save.source.substr(kBlock + 700, kBlock - 700));
  EXPECT_THAT(save.progress.messages, ElementsAre("Error reading file ..."));
}

TEST(SaveBlockRange, CancelRemovesWhatIsThereWhateverCallFailsOnce) {
  ForEachFault([](Fault& fault) {
    SaveOfBlocks save(2 * kBlock, fault);
    save.progress.cancelBefore = 2;
    save.Run(1, 2);
    fault = save.TakeFault();
    SCOPED_TRACE(::testing::PrintToString(fault));
    save.ExpectNothingLeft();
    if (!fault.lasting) save.ExpectNoTemporary();
    save.ExpectNoHalfTarget();
  });
}

TEST(SaveBlockRange, LeavesWhatAnotherHasPutThereWhateverCallFails) {
  ForEachFault([](Fault& fault) {
    SaveOfBlocks save(kBlock, fault);
    std::string there = "old";
    save.progress.onMessages = [&] {
      if (!save.world.disk.Bytes(kTarget)) save.world.disk.Put(kTarget, there = "theirs");
    };
    EXPECT_EQ(save.Run(1, 1), SaveOutcome::kFailed);
    fault = save.TakeFault();
    EXPECT_EQ(save.world.disk.View(kTarget), there) << fault;
  });
}

TEST(SaveBlockRange, KeepsItsPromisesWhateverCallFails) {
  ForEachFault([](Fault& fault) {
    SaveOfBlocks save(4 * kBlock, fault);
    const SaveOutcome outcome = save.Run(2, 3);
    fault = save.TakeFault();
    SCOPED_TRACE(::testing::PrintToString(fault));
    save.ExpectNothingLeft();
    const bool undeletable = fault.lasting && fault.met == "remove";
    if (!undeletable) save.ExpectNoTemporary();
    EXPECT_LE(save.progress.messages.size(), fault.lasting ? 2u : 1u);
    if (outcome == SaveOutcome::kSaved) {
      EXPECT_TRUE(save.TargetIsBlocks(2, 2) || !save.progress.messages.empty());
      EXPECT_EQ(save.world.disk.View(kTarget).size(), 2 * kBlock);
    } else {
      EXPECT_EQ(save.progress.messages.size(), 1u);
      EXPECT_EQ(save.progress.log.back(), "failed");
      save.ExpectNoHalfTarget();
    }
  });
}

}  // namespace
