// What whole blocks and chosen cameras have in common.

#include "tests/save/save_world.h"
#include "tests/support/recording_builder.h"

namespace {

constexpr char kReadError[] = "Error reading file ...";
constexpr char kWriteError[] = "Error writing file ...";
constexpr char kLink[] = "C:\\Saved\\link.60D";

/// A recording with an image of camera 1 and some of camera 2 in each block.
std::string Recording(int type, int blocks) {
  RecordingBuilder builder(type);
  for (int i = 0; i < blocks; ++i)
    builder.Block()
        .Image({.camera = 0, .bytes = Picture(300000, i)})
        .Image({.camera = 1, .bytes = Picture(100, i)});
  return builder.Bytes();
}

/// A save of all blocks with their first camera or with all that they hold.
class EverySave : public testing::TestWithParam<std::int32_t> {
 protected:
  /// What a save of three blocks gives.
  static std::string Whole() {
    SaveWorld save(0x30, Recording(0x30, 3));
    EXPECT_EQ(save.Run(1, 3, GetParam()), SaveEnd::kSaved);
    return save.world.disk.Take(kTarget);
  }
};

INSTANTIATE_TEST_SUITE_P(All, EverySave, testing::Values(kWholeBlocks, 1),
                         [](const auto& test) { return test.param ? "Cameras" : "Blocks"; });

TEST_P(EverySave, CancelAtEveryBlockRemovesWhatIsThere) {
  constexpr int kBlocks = 4;
  for (const int type : {0x00, 0x20, 0x60}) {
    SaveWorld whole(type, Recording(type, kBlocks));
    ASSERT_EQ(whole.Run(1, kBlocks, GetParam()), SaveEnd::kSaved);
    for (int block = 1; block <= kBlocks; ++block) {
      SaveWorld save(type, Recording(type, kBlocks));
      save.progress.cancelBefore = block;
      EXPECT_EQ(save.Run(1, kBlocks, GetParam()), SaveEnd::kCancelled);
      // Before the first image it is not certain that there is anything to write.
      EXPECT_EQ(save.world.disk.HasFile(kTarget), GetParam() != kWholeBlocks && block == 1);
      EXPECT_THAT(save.progress.messages, testing::IsEmpty());
      save.ExpectNothingLeft();
      save.ExpectNoTemporary();
      save.progress = {};
      EXPECT_EQ(save.Run(1, kBlocks, GetParam()), SaveEnd::kSaved);
      EXPECT_TRUE(save.world.disk.View(kTarget) == whole.world.disk.View(kTarget));
      PrintFigure(1, "saves cancelled");
    }
  }
}

TEST_P(EverySave, FailsOnAFullDisk) {
  SaveWorld save(0x30, Recording(0x30, 3));
  ASSERT_EQ(save.Run(1, 3, GetParam()), SaveEnd::kSaved);
  const std::size_t size = save.world.disk.View(kTarget).size();
  save.world.disk.MakeFolder("D:\\Saved");
  const auto expectFailure = [&] {
    save.progress = {};
    EXPECT_EQ(save.Run(1, 3, GetParam(), "D:\\Saved\\part.60D"), SaveEnd::kNotWritten);
    save.ExpectOneRefusal(kWriteError);
    EXPECT_FALSE(save.world.disk.HasFile("D:\\Saved\\part.60D"));
    save.ExpectNothingLeft();
    save.ExpectNoTemporary();
  };
  for (const std::size_t room : {std::size_t{0}, size / 2, size - 1}) {
    save.world.disk.SetRoom("D:", room);
    expectFailure();
  }
}

TEST_P(EverySave, TellsOfADiskThatHoldsNoSuchFile) {
  const std::size_t size = Whole().size();
  for (const std::size_t largest : {std::size_t{1000}, size - 1, size}) {
    SaveWorld save(0x30, Recording(0x30, 3));
    save.world.disk.SetLargestFile("C:", largest);
    const bool fits = largest == size;
    EXPECT_EQ(save.Run(1, 3, GetParam()), fits ? SaveEnd::kSaved : SaveEnd::kTooLarge) << largest;
    save.ExpectNothingLeft();
    save.ExpectNoTemporary();
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
    SaveWorld save(0x30, Recording(0x30, 3));
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
    EXPECT_EQ(save.Run(1, 3, GetParam(), c.target), SaveEnd::kSaved);
    EXPECT_GT(seen, 0);
    save.world.disk.LoseUnflushed();
    EXPECT_TRUE(save.world.disk.View(c.target) == whole);
    EXPECT_FALSE(save.world.disk.IsTemporary(c.target));
    EXPECT_TRUE(save.world.disk.HasFoldersPermissions(c.target));
    save.ExpectNothingLeft();
    save.ExpectNoTemporary();
  }
}

TEST_P(EverySave, TriesForAWhileToGiveTheFileItsName) {
  SaveWorld save(0x30, Recording(0x30, 3));
  save.world.disk.RefuseRenames(100);
  EXPECT_EQ(save.Run(1, 3, GetParam()), SaveEnd::kSaved);
  EXPECT_TRUE(save.world.disk.View(kTarget) == Whole());

  save.world.disk.RefuseRenames();
  const auto begun = save.world.clock.now;
  EXPECT_EQ(save.Run(1, 3, GetParam()), SaveEnd::kNotNamed);
  EXPECT_GE(save.world.clock.now - begun, std::chrono::seconds(10));
  EXPECT_FALSE(save.world.disk.HasFile(kTarget));
  save.world.disk.LoseUnflushed();
  EXPECT_TRUE(save.world.disk.View(save.result.detail) == Whole());
  EXPECT_FALSE(save.world.disk.IsTemporary(save.result.detail));
  EXPECT_NE(MessageOfEnd(save.result).text.find(save.result.detail), std::string::npos);
  save.ExpectNothingLeft();
}

TEST_P(EverySave, CanBeCancelledWhileItWaitsForItsName) {
  SaveWorld save(0x30, Recording(0x30, 3));
  save.world.disk.RefuseRenames();
  save.progress.onMessages = [&] {
    if (save.world.clock.now > std::chrono::seconds(1)) save.progress.cancelBefore = 1;
  };
  EXPECT_EQ(save.Run(1, 3, GetParam()), SaveEnd::kCancelled);
  save.ExpectNothingLeft();
  save.ExpectNoTemporary();
}

/// A fault that no one foresaw, and a session that ends while a box is up.
TEST_P(EverySave, LeavesNothingBehindWhateverHappens) {
  SaveWorld save(0x30, Recording(0x30, 3));
  int breaths = 0;
  save.progress.onMessages = [&] {
    if (++breaths == 3) throw std::bad_alloc();
  };
  EXPECT_EQ(save.Run(1, 3, GetParam()), SaveEnd::kFault);
  save.ExpectOneRefusal("Out of memory");
  save.ExpectNothingLeft();
  save.ExpectNoTemporary();

  breaths = 0;
  save.progress.onMessages = [&] {
    if (++breaths != 3) return;
    NewFile::RemoveUnfinished();
    save.ExpectNoTemporary();
    save.progress.cancelBefore = 1;
  };
  EXPECT_EQ(save.Run(1, 3, GetParam()), SaveEnd::kCancelled);
  save.ExpectNothingLeft();
}

TEST_P(EverySave, KeepsItsPromisesWhateverCallFails) {
  const std::string whole = Whole();
  ForEachFault([&](Fault& fault) {
    SaveWorld save(0x30, Recording(0x30, 3), fault);
    const SaveEnd end = save.Run(1, 3, GetParam());
    fault = save.TakeFault();
    SCOPED_TRACE(::testing::PrintToString(fault));
    save.ExpectNothingLeft();
    save.world.disk.LoseUnflushed();
    const bool isWhole = save.world.disk.Bytes(kTarget) == whole;
    EXPECT_EQ(end == SaveEnd::kSaved, isWhole || !save.progress.messages.empty());
    if (end != SaveEnd::kSaved) save.ExpectNoHalfTarget();
    if (end == SaveEnd::kNotNamed) {
      EXPECT_TRUE(save.world.disk.View(save.result.detail) == whole);
    } else if (!fault.lasting || fault.met != "remove") {
      save.ExpectNoTemporary();
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
    SaveWorld save(0x30, Recording(0x30, 2));
    refusal.prepare(save.world.disk);
    const auto paths = save.world.disk.Paths();
    EXPECT_NE(save.Run(refusal.first, 2, GetParam(), refusal.target, refusal.source),
              SaveEnd::kSaved);
    save.ExpectOneRefusal(refusal.message);
    EXPECT_THAT(save.progress.log, testing::Not(testing::Contains("1 of 2")));
    EXPECT_EQ(save.world.disk.Paths(), paths);
    EXPECT_EQ(save.world.disk.View(kTarget), "old");
    save.ExpectNothingLeft();
  }
}

}  // namespace
