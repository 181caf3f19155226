#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "capture/mdlFileProcessing.h"
#include "save/operations.h"
#include "tests/save/fake_progress.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_builder.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::size_t kBlock = 2097152;
constexpr char kProgram[] = "C:\\Trimbrook\\Trimbrook.exe";
constexpr char kSource[] = "C:\\Recordings\\door.60D";
constexpr char kTarget[] = "C:\\Saved\\part.60D";

/// Bytes whose blocks differ from each other all over, made once.
const std::string& SourceOf(std::size_t size) {
  static std::map<std::size_t, std::string> sources;
  std::string& source = sources[size];
  if (source.empty()) source = Picture(static_cast<int>(size));
  return source;
}

/// A source of four blocks and an old target.
struct SaveOfBlocks {
  explicit SaveOfBlocks(const Fault& fault = {}, std::size_t size = 4 * kBlock)
      : world(fault), source(SourceOf(size)) {
    world.disk.Put(kSource, source);
    world.disk.Put(kTarget, "old");
  }

  SaveOutcome Run(int first, int last, const std::string& target = kTarget,
                  const std::string& from = kSource) {
    return SaveBlockRange(world.system, progress, from, target, first, last);
  }

  /// What holds however a save ends.
  void ExpectNothingLeft() {
    EXPECT_EQ(world.disk.OpenHandles(), 0u);
    EXPECT_EQ(mdlFileProcessing::hSourceFile, platform::FileHandle::kInvalid);
    EXPECT_EQ(world.disk.View(kSource), source);
    EXPECT_TRUE(progress.PointerIsUsual());
  }
  void ExpectNoTemporary() {
    EXPECT_THAT(world.disk.FilesBelow("C:\\Trimbrook"), ElementsAre(kProgram));
  }
  bool TargetIs(std::size_t first, std::size_t count) const {
    return world.disk.View(kTarget) ==
           std::string_view(source).substr((first - 1) * kBlock, count * kBlock);
  }

  FakePlatform world;
  const std::string& source;
  FakeProgress progress;
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
  EXPECT_TRUE(save.TargetIs(2, 3));
  EXPECT_FALSE(save.world.disk.IsTemporary(kTarget));
  EXPECT_THAT(save.progress.log,
              ElementsAre("yield", "1 of 3", "yield", "2 of 3", "yield", "3 of 3", "yield",
                          "hourglass", "pointer", "finished"));
  save.ExpectNothingLeft();
  save.ExpectNoTemporary();
}

TEST(SaveBlockRange, TellsOfAPartialBlockAndFillsItUp) {
  SaveOfBlocks save({}, 2 * kBlock + 700);
  EXPECT_EQ(save.Run(1, 3), SaveOutcome::kSaved);
  EXPECT_EQ(save.world.disk.Bytes(kTarget),
            save.source + save.source.substr(kBlock + 700, kBlock - 700));
  EXPECT_THAT(save.progress.messages, ElementsAre("Error reading file ..."));
}

TEST(SaveBlockRange, CancelAtEveryBlockRemovesWhatIsThere) {
  constexpr int kBlocks = 4;
  for (int block = 1; block <= kBlocks; ++block) {
    SaveOfBlocks save;
    save.progress.cancelBefore = block;
    EXPECT_EQ(save.Run(1, kBlocks), SaveOutcome::kCancelled);
    EXPECT_FALSE(save.world.disk.HasFile(kTarget));
    EXPECT_EQ(save.progress.log.back(), "yield");
    EXPECT_THAT(save.progress.messages, IsEmpty());
    save.ExpectNothingLeft();
    save.ExpectNoTemporary();
    save.progress = {};
    EXPECT_EQ(save.Run(2, kBlocks), SaveOutcome::kSaved);
    EXPECT_TRUE(save.TargetIs(2, kBlocks - 1));
  }
  PrintFigure(kBlocks, "saves cancelled");
}

struct Refusal {
  const char* name;
  int first = 1;
  int last = 2;
  std::string target = kTarget;
  std::string source = kSource;
  std::string message = "Error writing file ...";
  void (*prepare)(MemoryDisk& disk) = [](MemoryDisk&) {};
};

class RefusedBlockSave : public ::testing::TestWithParam<Refusal> {};

TEST_P(RefusedBlockSave, TellsOnceAndHarmsNothing) {
  const Refusal& refusal = GetParam();
  SaveOfBlocks save;
  refusal.prepare(save.world.disk);
  const auto paths = save.world.disk.Paths();
  EXPECT_EQ(save.Run(refusal.first, refusal.last, refusal.target, refusal.source),
            SaveOutcome::kFailed);
  EXPECT_THAT(save.progress.messages, ElementsAre(refusal.message));
  EXPECT_EQ(save.progress.log.back(), "failed");
  EXPECT_EQ(save.world.disk.Paths(), paths);
  EXPECT_EQ(save.world.disk.Bytes(kTarget).value_or("old"), "old");
  save.ExpectNothingLeft();
}

const Refusal kRefusals[] = {
    {.name = "EmptyRange", .first = 3, .last = 2, .message = "Error reading file ..."},
    {.name = "BlockZero", .first = 0, .message = "Error reading file ..."},
    {.name = "NoSource", .source = "C:\\gone.60D", .message = "Error reading file ..."},
    {.name = "SourceAsTarget", .target = kSource},
    {.name = "SourceInCapitals", .target = "C:\\RECORDINGS\\DOOR.60D"},
    {.name = "LinkToSource",
     .target = "C:\\Saved\\link.60D",
     .prepare = [](MemoryDisk& disk) { disk.Link(kSource, "C:\\Saved\\link.60D"); }},
    {.name = "HiddenTarget", .prepare = [](MemoryDisk& disk) { disk.Hide(kTarget); }},
    {.name = "NoTargetFolder", .target = "C:\\nowhere\\part.60D"},
};

INSTANTIATE_TEST_SUITE_P(All, RefusedBlockSave, ::testing::ValuesIn(kRefusals),
                         [](const auto& test) { return test.param.name; });

TEST(SaveBlockRange, FailsOnAFullDisk) {
  for (const char* volume : {"C:", "D:"}) {
    SaveOfBlocks save;
    save.world.disk.Put("D:\\Saved\\x", "");
    save.world.disk.SetRoom(volume, kBlock + 5);
    EXPECT_EQ(save.Run(1, 3, "D:\\Saved\\part.60D"), SaveOutcome::kFailed) << volume;
    EXPECT_THAT(save.progress.messages, ElementsAre("Error writing file ..."));
    EXPECT_FALSE(save.world.disk.HasFile("D:\\Saved\\part.60D"));
    save.ExpectNothingLeft();
    save.ExpectNoTemporary();
  }
}

TEST(SaveBlockRange, CancelRemovesWhatIsThereWhateverCallFailsOnce) {
  ForEachFault([](Fault& fault) {
    SaveOfBlocks save(fault, 2 * kBlock);
    save.progress.cancelBefore = 2;
    save.Run(1, 2);
    fault = save.world.fault;
    SCOPED_TRACE(::testing::PrintToString(fault));
    save.ExpectNothingLeft();
    if (!fault.lasting) save.ExpectNoTemporary();
    EXPECT_EQ(save.world.disk.Bytes(kTarget).value_or("old"), "old");
  });
}

TEST(SaveBlockRange, LeavesWhatAnotherHasPutThereWhateverCallFails) {
  ForEachFault([](Fault& fault) {
    SaveOfBlocks save(fault, kBlock);
    std::string there = "old";
    save.progress.onMessages = [&] {
      if (!save.world.disk.HasFile(kTarget)) save.world.disk.Put(kTarget, there = "theirs");
    };
    EXPECT_EQ(save.Run(1, 1), SaveOutcome::kFailed);
    fault = save.world.fault;
    EXPECT_EQ(save.world.disk.Bytes(kTarget), there) << fault;
  });
}

TEST(SaveBlockRange, KeepsItsPromisesWhateverCallFails) {
  ForEachFault([](Fault& fault) {
    SaveOfBlocks save(fault);
    const SaveOutcome outcome = save.Run(2, 3);
    fault = save.world.fault;
    SCOPED_TRACE(::testing::PrintToString(fault));
    save.ExpectNothingLeft();
    const bool undeletable = fault.lasting && fault.met == "remove";
    if (!undeletable) save.ExpectNoTemporary();
    EXPECT_LE(save.progress.messages.size(), fault.lasting ? 2u : 1u);
    if (outcome == SaveOutcome::kSaved) {
      EXPECT_TRUE(save.TargetIs(2, 2) || !save.progress.messages.empty());
      EXPECT_EQ(save.world.disk.FileBytes(kTarget), 2 * kBlock);
    } else {
      EXPECT_EQ(save.progress.messages.size(), 1u);
      EXPECT_EQ(save.progress.log.back(), "failed");
      EXPECT_EQ(save.world.disk.Bytes(kTarget).value_or("old"), "old");
    }
  });
}

}  // namespace
