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
class EverySave : public testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(All, EverySave, testing::Values(kWholeBlocks, 1),
                         [](const auto& test) { return test.param ? "Cameras" : "Blocks"; });

TEST_P(EverySave, CancelAtEveryBlockRemovesWhatIsThere) {
  constexpr int kBlocks = 4;
  for (const int type : {0x00, 0x20, 0x60}) {
    SaveWorld whole(type, Recording(type, kBlocks));
    ASSERT_EQ(whole.Run(1, kBlocks, GetParam()), SaveOutcome::kSaved);
    for (int block = 1; block <= kBlocks; ++block) {
      SaveWorld save(type, Recording(type, kBlocks));
      save.progress.cancelBefore = block;
      EXPECT_EQ(save.Run(1, kBlocks, GetParam()), SaveOutcome::kCancelled);
      EXPECT_FALSE(save.world.disk.HasFile(kTarget));
      EXPECT_EQ(save.progress.log.back(), "yield");
      EXPECT_THAT(save.progress.messages, testing::IsEmpty());
      save.ExpectNothingLeft();
      save.ExpectNoTemporary();
      save.progress = {};
      EXPECT_EQ(save.Run(1, kBlocks, GetParam()), SaveOutcome::kSaved);
      EXPECT_TRUE(save.world.disk.View(kTarget) == whole.world.disk.View(kTarget));
      PrintFigure(1, "saves cancelled");
    }
  }
}

TEST_P(EverySave, FailsOnAFullDisk) {
  SaveWorld save(0x30, Recording(0x30, 3));
  ASSERT_EQ(save.Run(1, 3, GetParam()), SaveOutcome::kSaved);
  const std::size_t size = save.world.disk.View(kTarget).size();
  save.world.disk.MakeFolder("D:\\Saved");
  const auto expectFailure = [&] {
    save.progress = {};
    EXPECT_EQ(save.Run(1, 3, GetParam(), "D:\\Saved\\part.60D"), SaveOutcome::kFailed);
    save.ExpectOneRefusal(kWriteError);
    EXPECT_FALSE(save.world.disk.HasFile("D:\\Saved\\part.60D"));
    save.ExpectNothingLeft();
    save.ExpectNoTemporary();
  };
  for (const std::size_t room : {std::size_t{0}, size / 2, size - 1}) {
    save.world.disk.SetRoom("D:", room);
    expectFailure();
  }
  // Whole blocks are written into the program's folder first.
  save.world.disk.SetRoom(GetParam() == kWholeBlocks ? "C:" : "D:", size / 2);
  expectFailure();
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
    EXPECT_EQ(save.Run(refusal.first, 2, GetParam(), refusal.target, refusal.source),
              SaveOutcome::kFailed);
    save.ExpectOneRefusal(refusal.message);
    EXPECT_THAT(save.progress.log, testing::Not(testing::Contains("1 of 2")));
    EXPECT_EQ(save.world.disk.Paths(), paths);
    EXPECT_EQ(save.world.disk.View(kTarget), "old");
    save.ExpectNothingLeft();
  }
}

}  // namespace
