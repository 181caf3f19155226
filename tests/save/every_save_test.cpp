// What whole blocks and chosen cameras have in common.

#include "tests/save/save_world.h"
#include "tests/support/recording_builder.h"

namespace {

using ::testing::ElementsAre;

constexpr char kReadError[] = "Error reading file ...";
constexpr char kWriteError[] = "Error writing file ...";
constexpr char kLink[] = "C:\\Saved\\link.60D";
constexpr int kBlocks = 2;

/// A recording with an image of camera 1 and some of camera 2 in each block.
std::string Recording(int blocks = kBlocks) {
  RecordingBuilder builder(0x30);
  for (int i = 0; i < blocks; ++i)
    builder.Block()
        .Image({.camera = 0, .bytes = Picture(300000, i)})
        .Image({.camera = 1, .bytes = Picture(100, i)});
  return builder.Bytes();
}

/// A save of all blocks with their first camera or with all that they hold.
struct Save : SaveWorld {
  explicit Save(const Fault& fault = {}) : SaveWorld(0x30, Recording(), fault) {}
  SaveEnd Run(std::int32_t cameras, const std::string& target = kTarget) {
    return SaveWorld::Run(1, kBlocks, cameras, target);
  }
};

class EverySave : public testing::TestWithParam<std::int32_t> {
 protected:
  /// What a save gives.
  static std::string Whole() {
    Save save;
    EXPECT_EQ(save.Run(GetParam()), SaveEnd::kSaved);
    return save.world.disk.Take(kTarget);
  }
};

INSTANTIATE_TEST_SUITE_P(All, EverySave, testing::Values(kWholeBlocks, 1),
                         [](const auto& test) { return test.param ? "Cameras" : "Blocks"; });

TEST_P(EverySave, CancelAtEveryBlockRemovesWhatIsThere) {
  constexpr int kMany = 6;  // So many that some lie between two flushes.
  const std::string recording = Recording(kMany);
  for (int block = 1; block <= kMany; ++block) {
    SaveWorld save(0x30, recording);
    save.progress.cancelBefore = block;
    EXPECT_EQ(save.Run(1, kMany, GetParam()), SaveEnd::kCancelled);
    // Before the first image it is not certain that there is anything to write.
    EXPECT_EQ(save.world.disk.HasFile(kTarget), GetParam() != kWholeBlocks && block == 1);
    EXPECT_THAT(save.progress.messages, testing::IsEmpty());
    save.ExpectNothingLeft();
    PrintFigure(1, "saves cancelled");
  }
}

TEST_P(EverySave, ShowsEachBlock) {
  Save save;
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kSaved);
  EXPECT_EQ(MessageOfLosses(save.result), "");
  // On a disk in memory each block is a slice; a real one is asked less and less often.
  std::erase(save.progress.log, "yield");
  if (GetParam() == kWholeBlocks) {
    EXPECT_THAT(save.progress.log, ElementsAre("1 of 2", "2 of 2", "hourglass", "pointer"));
  } else {
    EXPECT_THAT(save.progress.log, ElementsAre("1 of 2", "2 of 2"));
  }
}

TEST_P(EverySave, TellsOfADiskThatHoldsNoSuchFile) {
  const std::size_t size = Whole().size();
  for (const std::size_t largest : {std::size_t{1000}, size - 1, size}) {
    Save save;
    save.world.disk.SetLargestFile("C:", largest);
    const bool fits = largest == size;
    EXPECT_EQ(save.Run(GetParam()), fits ? SaveEnd::kSaved : SaveEnd::kTooLarge) << largest;
    save.ExpectNothingLeft();
  }
}

/// Where the file lies until it is whole.
TEST_P(EverySave, LiesOnTheTargetsVolumeUnderATemporaryName) {
  const std::string whole = Whole();
  struct Case {
    const char* what;
    std::string target;
    std::string folder;
    void (*prepare)(MemoryDisk& disk) = [](MemoryDisk&) {};
  };
  const Case cases[] = {
      {"one volume", kTarget, "C:\\Trimbrook"},
      {"another volume", "D:\\Saved\\part.60D", "D:\\Saved"},
      {"a volume's root", "D:\\part.60D", "D:\\"},
      {"a mounted volume", kTarget, "C:\\Saved",
       [](MemoryDisk& disk) { disk.Mount("C:\\Saved", "F:"); }},
      {"a program's folder that takes nothing", kTarget, "C:\\Saved",
       [](MemoryDisk& disk) { disk.Protect("C:\\Trimbrook"); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Save save;
    save.world.disk.MakeFolder("D:\\Saved");
    c.prepare(save.world.disk);
    int seen = 0;
    save.progress.onMessages = [&] {
      for (const std::string& path : save.world.disk.Paths()) {
        if (!path.ends_with(".tmp")) continue;
        EXPECT_TRUE(path.starts_with(c.folder)) << path;
        EXPECT_TRUE(save.world.disk.IsTemporary(path));
        ++seen;
      }
      EXPECT_EQ(save.world.disk.Bytes(c.target).value_or("old"), "old");
    };
    EXPECT_EQ(save.Run(GetParam(), c.target), SaveEnd::kSaved);
    EXPECT_GT(seen, 0);
    save.world.disk.LoseUnflushed();
    EXPECT_TRUE(save.world.disk.View(c.target) == whole);
    EXPECT_FALSE(save.world.disk.IsTemporary(c.target));
    EXPECT_TRUE(save.world.disk.HasFoldersPermissions(c.target));
    save.ExpectNothingLeft();
  }
}

TEST_P(EverySave, TriesForAWhileToGiveTheFileItsName) {
  const std::string whole = Whole();
  Save save;
  save.world.disk.RefuseRenames(100);
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kSaved);
  EXPECT_TRUE(save.world.disk.View(kTarget) == whole);

  save.world.disk.RefuseRenames();
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kNotNamed);
  EXPECT_GE(save.world.clock.now, std::chrono::seconds(10));
  EXPECT_FALSE(save.world.disk.HasFile(kTarget));
  save.world.disk.LoseUnflushed();
  EXPECT_FALSE(save.world.disk.IsTemporary(save.result.detail));
  EXPECT_NE(MessageOfEnd(save.result).text.find(save.result.detail), std::string::npos);
  EXPECT_TRUE(save.world.disk.Take(save.result.detail) == whole);

  save.progress.onMessages = [&, begun = save.world.clock.now] {
    if (save.world.clock.now > begun + std::chrono::seconds(1)) save.progress.cancelBefore = 1;
  };
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kCancelled);
  save.ExpectNothingLeft();
}

/// A fault that no one foresaw, and a session that ends while a box is up.
TEST_P(EverySave, LeavesNothingBehindWhateverHappens) {
  Save save;
  int breaths = 0;
  save.progress.onMessages = [&] {
    if (++breaths == 2) throw std::bad_alloc();
  };
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kFault);
  EXPECT_EQ(MessageOfEnd(save.result).text, "Out of memory");
  save.ExpectNothingLeft();

  breaths = 0;
  save.progress.onMessages = [&] {
    if (++breaths != 2) return;
    NewFile::RemoveUnfinished();
    save.ExpectNoTemporary();
    save.progress.cancelBefore = 1;
  };
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kCancelled);
  save.ExpectNothingLeft();
}

TEST_P(EverySave, KeepsItsPromisesWhateverCallFails) {
  const std::string whole = Whole();
  for (const int cancelBefore : {0, 2})
    ForEachFault([&](Fault& fault) {
      Save save(fault);
      save.progress.cancelBefore = cancelBefore;
      const SaveEnd end = save.Run(GetParam());
      fault = save.TakeFault();
      SCOPED_TRACE(::testing::PrintToString(fault));
      save.world.disk.LoseUnflushed();
      const std::string target = save.world.disk.Bytes(kTarget).value_or("old");
      if (end == SaveEnd::kSaved)
        EXPECT_TRUE(target == whole || !save.progress.messages.empty());
      else
        EXPECT_EQ(target, "old") << "half a file is left";
      if (end == SaveEnd::kNotNamed) {
        EXPECT_TRUE(save.world.disk.Take(save.result.detail) == whole);
        save.ExpectNothingLeft();
      } else if (!fault.lasting || fault.met != "remove") {
        save.ExpectNothingLeft();
      }
    });
}

/// What a save refuses, and what it says then.
struct Refusal {
  const char* name;
  std::string message;
  int first = 1;
  std::string target = kTarget;
  std::string source = kSource;
  void (*prepare)(MemoryDisk& disk) = [](MemoryDisk&) {};
};

const Refusal kRefusals[] = {
    {.name = "empty range", .message = kReadError, .first = 3},
    {.name = "block 0", .message = kReadError, .first = 0},
    {.name = "no source", .message = kReadError, .source = "C:\\gone.60D"},
    {.name = "source as target", .message = kWriteError, .target = kSource},
    {.name = "source in capitals", .message = kWriteError, .target = "C:\\RECORDINGS\\DOOR.60D"},
    {.name = "link to the source",
     .message = kWriteError,
     .target = kLink,
     .prepare = [](MemoryDisk& disk) { disk.Link(kSource, kLink); }},
    {.name = "hidden target",
     .message = kWriteError,
     .prepare = [](MemoryDisk& disk) { disk.Hide(kTarget); }},
    {.name = "no target folder", .message = kWriteError, .target = "C:\\nowhere\\part.60D"},
    {.name = "folder as target",
     .message = kWriteError,
     .target = "C:\\Saved\\folder",
     .prepare = [](MemoryDisk& disk) { disk.MakeFolder("C:\\Saved\\folder"); }},
};

TEST_P(EverySave, RefusalsAreToldOnceAndHarmNothing) {
  for (const Refusal& refusal : kRefusals) {
    SCOPED_TRACE(refusal.name);
    Save save;
    refusal.prepare(save.world.disk);
    const auto paths = save.world.disk.Paths();
    save.SaveWorld::Run(refusal.first, kBlocks, GetParam(), refusal.target, refusal.source);
    save.ExpectRefusal(refusal.message);
    EXPECT_THAT(save.progress.log, testing::Not(testing::Contains("1 of 2")));
    EXPECT_EQ(save.world.disk.Paths(), paths);
  }
}

TEST(SaveBlockRange, LeavesWhatAnotherHasPutThereWhateverCallFails) {
  const std::string noise = Picture(kBlock);
  ForEachFault([&](Fault& fault) {
    SaveWorld save(0x30, noise, fault);
    std::string there = "old";
    save.progress.onMessages = [&] {
      if (!save.world.disk.Bytes(kTarget)) save.world.disk.Put(kTarget, there = "theirs");
    };
    EXPECT_NE(save.Run(1, 1, kWholeBlocks), SaveEnd::kSaved);
    fault = save.TakeFault();
    EXPECT_EQ(save.world.disk.View(kTarget), there) << fault;
  });
}

TEST(SaveBlockRange, TellsOfAPartialBlockAndFillsItUp) {
  const std::string noise = Picture(2 * kBlock + 700);
  SaveWorld save(0x30, noise);
  EXPECT_EQ(save.Run(2, 3, kWholeBlocks), SaveEnd::kSaved);
  EXPECT_EQ(save.world.disk.Bytes(kTarget),
            noise.substr(kBlock) + noise.substr(kBlock + 700, kBlock - 700));
  EXPECT_THAT(save.progress.messages, ElementsAre(kReadError));
}

}  // namespace
