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
  SaveEnd Run(int first, int last) { return SaveWorld::Run(first, last, kWholeBlocks); }
};

TEST(SaveBlockRange, ShowsEachBlock) {
  SaveOfBlocks save;
  EXPECT_EQ(save.Run(2, 4), SaveEnd::kSaved);
  EXPECT_TRUE(save.TargetIsBlocks(2, 3));
  // On a disk in memory each block is a slice; a real one is asked less and less often.
  std::erase(save.progress.log, "yield");
  EXPECT_THAT(save.progress.log, ElementsAre("1 of 3", "2 of 3", "3 of 3", "hourglass", "pointer"));
}

TEST(SaveBlockRange, TellsOfAPartialBlockAndFillsItUp) {
  SaveOfBlocks save(2 * kBlock + 700);
  EXPECT_EQ(save.Run(1, 3), SaveEnd::kSaved);
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
    EXPECT_NE(save.Run(1, 1), SaveEnd::kSaved);
    fault = save.TakeFault();
    EXPECT_EQ(save.world.disk.View(kTarget), there) << fault;
  });
}

}  // namespace
