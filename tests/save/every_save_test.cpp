// What whole blocks and chosen cameras have in common.

#include <climits>

#include "tests/save/save_world.h"

namespace {

using ::testing::ElementsAre;

constexpr char kReadError[] = "Error reading file ...", kWriteError[] = "Error writing file ...";

std::string Why(const char* what, const char* reason) {
  return what + ("\r\n\r\n" + std::string(reason));
}

class EverySave : public testing::TestWithParam<std::uint32_t> {
 protected:
  /// What a save gives.
  static std::string Whole() {
    SaveWorld save;
    EXPECT_EQ(save.Run(GetParam()), SaveEnd::kSaved);
    EXPECT_EQ(save.ToldEnd(), "");
    EXPECT_EQ(save.progress.done, 2);
    return save.disk.Take(kTarget);
  }
};

INSTANTIATE_TEST_SUITE_P(All, EverySave, testing::Values(kWholeBlocks, 1u),
                         [](const auto& test) { return test.param ? "Cameras" : "Blocks"; });

TEST_P(EverySave, CancelAtEveryBlockRemovesWhatIsThere) {
  constexpr int kMany = 6;  // So many that some lie between two flushes.
  const std::string recording = RecordingOf(kMany);
  for (int block = 1; block <= kMany + 1; ++block) {  // The last time when all are done.
    SaveWorld save(recording);
    save.world.clock.step = std::chrono::milliseconds(20);  // A breath after each block.
    save.progress.cancelBefore = block;
    EXPECT_EQ(save.Run(GetParam(), 1, kMany), SaveEnd::kCancelled);
    EXPECT_EQ(save.progress.done, block - 1);
    EXPECT_EQ(save.disk.Bytes(kTarget), "old");
    EXPECT_THAT(save.progress.messages, testing::IsEmpty());
    save.ExpectNothingLeft();
    PrintFigure(1, "saves cancelled");
  }
}

TEST(EverySaveAsks, ForRoomBeforeItWritesAnything) {
  BlockPlan small;
  for (int i = 0; i < 240; ++i) small.images.push_back({.bytes = Picture(100, i)});
  // Three blocks of the 246 images that one holds, and none is full.
  const std::string many = Recording(0x30, {small, small, small});
  const std::string large = RecordingOf(2);
  const BlockPlan noTail = {.images = {{.bytes = Picture(4094 * 512), .tail = false}}};
  const std::string lost = Recording(0x10, {noTail, {.images = {{.bytes = Picture(100)}}}});
  const struct {
    const std::string& recording;
    std::uint32_t cameras;
    int last;
    std::uint64_t tooFew, enough;  // To see it before, and for the file.
  } kCases[] = {{large, kWholeBlocks, 2, 2 * kBlock - 1, 2 * kBlock},
                {large, 0b01, 2, 2 * 1200128 + 1023, kBlock + 1200128 + 1024},
                {large, 0b10, 2, 2 * 512 + 1023, 2 * 512 + 1024},
                {many, 1, 3, 2 * kBlock + 512 + 1023, 2 * kBlock + 228 * 512 + 1024},
                {lost, 1, 2, 512 + 1023, 512 + 1024}};
  for (const auto& c : kCases)
    for (const bool isOfDisk : {true, false}) {
      SaveWorld save(c.recording);
      std::uint64_t& limit = (isOfDisk ? save.disk.room : save.disk.largest)["C:"];
      limit = c.tooFew;
      save.progress.onMessages = [&] { save.ExpectNoTemporary(); };
      EXPECT_EQ(save.Run(c.cameras, 1, c.last), isOfDisk ? SaveEnd::kNoSpace : SaveEnd::kTooLarge);
      save.ExpectRefusal(isOfDisk ? save_text::kNoSpace : save_text::kTooLarge);
      EXPECT_EQ(save.progress.done, 0);
      save.progress.onMessages = [] {};
      limit = c.enough - 1;
      if (!isOfDisk) EXPECT_EQ(save.Run(c.cameras, 1, c.last), SaveEnd::kTooLarge) << "in the end";
      limit = c.enough;
      EXPECT_EQ(save.Run(c.cameras, 1, c.last), SaveEnd::kSaved) << c.enough;
      save.ExpectNothingLeft();
    }
}

/// Where the file lies until it is whole.
TEST_P(EverySave, LiesOnTheTargetsVolumeUnderATemporaryName) {
  const std::string whole = Whole();
  const struct {
    const char* target;
    const char* folder;
    const char* mounted = "";  ///< A volume of its own.
    const char* missing = "";
  } kCases[] = {{kTarget, "C:\\Trimbrook"},
                {"D:\\Saved\\part.60D", "D:\\Saved"},
                {"D:\\part.60D", "D:\\"},
                {kTarget, "C:\\Saved", "C:\\Saved"},
                {kTarget, "C:\\Saved", "", "C:\\Trimbrook"}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.folder);
    SaveWorld save;
    save.disk.MakeFolder("D:\\Saved");
    save.disk.mounts[c.mounted] = "F:";
    save.disk.RemoveFolder(c.missing);
    save.disk.removesTemporary = false;
    int seen = 0;
    const auto before = save.disk.Bytes(c.target);
    save.progress.onMessages = [&] {
      for (const auto& [path, file] : save.disk.files) {
        if (!path.ends_with(".tmp")) continue;
        EXPECT_TRUE(path.starts_with(c.folder) && file->temporary) << path;
        ++seen;
      }
      const auto now = save.disk.Bytes(c.target);
      EXPECT_TRUE(now == before || now == whole);
    };
    save.job.targetPath = c.target;
    EXPECT_EQ(save.Run(GetParam()), SaveEnd::kSaved);
    EXPECT_GT(seen, 0);
    save.disk.LoseUnflushed();
    EXPECT_TRUE(save.disk.View(c.target) == whole);
    EXPECT_FALSE(save.disk.At(c.target)->temporary);
    EXPECT_EQ(save.disk.At(c.target)->permissions + "\\part.60D", c.target);
    save.ExpectNothingLeft();
  }
}

TEST_P(EverySave, TriesForAWhileToGiveTheFileItsName) {
  const std::string whole = Whole();
  SaveWorld save;
  int told = 0;
  save.progress.onMessages = [&] { told += NewFile::WaitsForName(); };
  save.disk.refusedRenames = 100;
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kSaved);
  EXPECT_EQ(told, 100);
  EXPECT_FALSE(NewFile::WaitsForName());
  EXPECT_TRUE(save.disk.View(kTarget) == whole);

  save.disk.refusedRenames = INT_MAX;
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kNotNamed);
  EXPECT_GE(save.world.clock.now, std::chrono::seconds(10));
  EXPECT_TRUE(save.disk.View(kTarget) == whole) << "the first one's";
  save.disk.LoseUnflushed();
  EXPECT_FALSE(save.disk.At(save.result.detail)->temporary);
  EXPECT_NE(save.ToldEnd().find(save.result.detail), std::string::npos);
  EXPECT_TRUE(save.disk.Take(save.result.detail) == whole);

  save.progress.onMessages = [&, begun = save.world.clock.now] {
    if (save.world.clock.now > begun + std::chrono::seconds(1)) save.progress.cancelBefore = 1;
  };
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kCancelled);
  save.ExpectNothingLeft();

  // What looks at the name at the same moment is no hindrance.
  save.progress = {};
  save.disk.refusedRenames = 0;
  const auto glance = save.disk.Open(kTarget, platform::OpenMode::kReadExisting);
  save.progress.onMessages = [&, told = false]() mutable {
    if (NewFile::WaitsForName() && !std::exchange(told, true)) save.disk.Close(glance);
  };
  EXPECT_EQ(save.Run(GetParam()), SaveEnd::kSaved);
}

/// What has the name before anything is read, and what comes to have it while the file is made.
TEST_P(EverySave, ReplacesWhatItMay) {
  using IfTaken = NewFile::IfTaken;
  const std::string whole = Whole();
  const struct {
    IfTaken ifTaken;
    SaveEnd ontoOld, ontoTheirs;
  } kCases[] = {{IfTaken::kReplace, SaveEnd::kSaved, SaveEnd::kSaved},
                {IfTaken::kReplaceOld, SaveEnd::kSaved, SaveEnd::kNotNamed},
                {IfTaken::kRefuse, SaveEnd::kTaken, SaveEnd::kTaken}};
  for (const auto& c : kCases) {
    SaveWorld save;
    save.job.ifTaken = c.ifTaken;
    save.disk.reads = 0;
    EXPECT_EQ(save.Run(GetParam()), c.ontoOld);
    EXPECT_EQ(save.disk.reads == 0, c.ontoOld == SaveEnd::kTaken);
    save.disk.Take(kTarget);
    save.progress.onMessages = [&] {
      if (save.disk.OpenHandles() > 1 && !save.disk.At(kTarget)) save.disk.Put(kTarget, "theirs");
    };
    EXPECT_EQ(save.Run(GetParam()), c.ontoTheirs);
    EXPECT_TRUE(save.disk.View(kTarget) == (c.ontoTheirs == SaveEnd::kSaved ? whole : "theirs"));
    save.disk.Take(save.result.detail);
    save.ExpectNothingLeft();
  }
}

/// A fault that no one foresaw, and a session that ends while a box is up.
TEST_P(EverySave, LeavesNothingBehindWhateverHappens) {
  for (const bool sessionEnds : {false, true}) {
    SaveWorld save;
    save.progress.onMessages = [&, breaths = 0]() mutable {
      if (++breaths != 2) return;
      if (!sessionEnds) throw std::bad_alloc();
      NewFile::RemoveUnfinished();
      save.ExpectNoTemporary();
      save.progress.cancelBefore = 1;
    };
    EXPECT_EQ(save.Run(GetParam()), sessionEnds ? SaveEnd::kCancelled : SaveEnd::kFault);
    EXPECT_EQ(save.ToldEnd(), sessionEnds ? "" : "Out of memory");
    save.ExpectNothingLeft();
  }
}

/// At any moment the old file or the whole new one has the name, after a loss of power as well.
TEST_P(EverySave, KeepsItsPromisesWhateverCallFails) {
  const std::string whole = Whole();
  const std::string because = "\r\n\r\nThe disk is full.";
  for (const int cancelBefore : {0, 2})
    ForEachFault([&](Fault& fault) {
      SaveWorld save;
      save.disk.fault = fault;
      save.disk.fault.reason = {platform::Failure::Kind::kDiskFull};
      save.progress.cancelBefore = cancelBefore;
      const auto expectOldOrWhole = [&](bool mustBeWhole = false) {
        const auto target = save.disk.At(kTarget);
        ASSERT_TRUE(target);
        EXPECT_TRUE(target->bytes == whole || (target->bytes == "old" && !mustBeWhole) ||
                    !save.progress.messages.empty());
      };
      save.progress.onMessages = [&] { expectOldOrWhole(); };
      const SaveEnd end = save.Run(GetParam());
      fault = save.TakeFault();
      SCOPED_TRACE(::testing::PrintToString(fault));
      expectOldOrWhole(end == SaveEnd::kSaved);
      if (end == SaveEnd::kNotNamed) EXPECT_TRUE(save.disk.Take(save.result.detail) == whole);
      if (end == SaveEnd::kNotNamed || !fault.lasting || fault.met != "remove")
        save.ExpectNothingLeft();
      if (end == SaveEnd::kNotWritten) EXPECT_EQ(save.ToldEnd(), kWriteError + because);
      if (end == SaveEnd::kNotRead && fault.kind == Fault::Kind::kError)
        EXPECT_EQ(save.ToldEnd(), kReadError + because);
      save.disk.LoseUnflushed();
      expectOldOrWhole(end == SaveEnd::kSaved);
    });
}

TEST_P(EverySave, RefusalsAreToldOnceAndHarmNothing) {
  constexpr char kLink[] = "C:\\Saved\\link.60D", kHidden[] = "C:\\Saved\\hidden.60D";
  constexpr char kHeld[] = "C:\\Saved\\held.60D", kReadOnly[] = "C:\\Saved\\read-only.60D";
  constexpr char kWritten[] = "C:\\Saved\\written.60D";
  const struct {
    const char* name;
    std::string message;
    int first;
    const char* target;
    const char* source = kSource;
  } kRefusals[] = {
      {"empty range", kReadError, 3, kTarget},
      {"block 0", kReadError, 0, kTarget},
      {"no source", Why(kReadError, "The recording is no longer there."), 1, kTarget, "C:\\gone"},
      {"source in use", Why(kReadError, "The recording is in use by another program."), 1, kTarget,
       kWritten},
      {"source as target", Why(kWriteError, "The target is the recording itself."), 1, kSource},
      {"link to it", Why(kWriteError, "The target is the recording itself."), 1, kLink},
      {"hidden target", Why(kWriteError, "A hidden or system file has this name."), 1, kHidden},
      {"protected target", Why(kWriteError, "The file is write-protected."), 1, kReadOnly},
      {"held target", Why(kWriteError, "The file is in use by another program."), 1, kHeld},
      {"no folder", Why(kWriteError, "The folder does not exist."), 1, "C:\\nowhere\\part.60D"},
      {"folder as target", Why(kWriteError, "A folder has this name."), 1, "C:\\Saved"},
      {"sealed folder", Why(kWriteError, "The disk is write-protected."), 1, "C:\\Seal\\part.60D"},
  };
  for (const auto& refusal : kRefusals) {
    SCOPED_TRACE(refusal.name);
    SaveWorld save;
    save.disk.Link(kSource, kLink);
    save.disk.MakeFolder(save.disk.sealed = "C:\\Seal");
    for (const char* path : {kHidden, kReadOnly, kHeld}) save.disk.Put(path, "");
    save.disk.At(kHidden)->hidden = save.disk.At(kReadOnly)->readOnly = true;
    const auto held = {save.disk.Open(kHeld, platform::OpenMode::kReadExisting),
                       save.disk.Open(kWritten, platform::OpenMode::kWriteNew)};
    const auto files = save.disk.files;
    save.job.targetPath = refusal.target;
    save.job.sourcePath = refusal.source;
    save.Run(GetParam(), refusal.first, 2);
    for (const platform::FileHandle file : held) save.disk.Close(file);
    save.ExpectRefusal(refusal.message);
    EXPECT_EQ(save.progress.done, 0);
    EXPECT_TRUE(save.disk.files == files);
  }
}

/// A file that was rebuilt ends in a short block. Opened again, it is a recording as any other.
TEST(EverySaveOfARebuiltFile, GivesWhatOneSaveWouldHaveGiven) {
  std::vector<BlockPlan> blocks(6);
  for (int i = 0; i < 18; ++i)
    blocks[static_cast<std::size_t>(i / 3)].images.push_back(
        {.camera = i % 3, .seconds = i, .bytes = Picture(300000, i), .text = "text"});
  SaveWorld save(Recording(0x30, blocks));
  const auto saved = [&save](std::uint32_t cameras, int first, int last) {
    EXPECT_EQ(save.Run(cameras, first, last), SaveEnd::kSaved);
    EXPECT_EQ(save.ToldEnd(), "");
    return save.disk.Take(kTarget);
  };
  const auto open = [&save](const std::string& recording) {
    save.disk.Put(kSource, recording);
    EXPECT_EQ(mdlFileProcessing::ScanSourceFile(save.disk, kSource).end,
              mdlFileProcessing::ReadEnd::kDone);
    return mdlFileProcessing::lngBlockCount;
  };
  const std::string atOnce = saved(0b010, 1, 6);
  ASSERT_EQ(open(saved(0b110, 1, 6)), 2);
  EXPECT_TRUE(saved(0b010, 1, 2) == atOnce);
  const std::string rest = saved(0b010, 2, 2);
  const std::string trimmed = saved(kWholeBlocks, 2, 2);
  EXPECT_TRUE(trimmed == save.disk.View(kSource).substr(kBlock));
  ASSERT_EQ(open(trimmed), 1);
  EXPECT_TRUE(saved(0b010, 1, 1) == rest);

  // What reaches behind its own trailer is damaged, even where there would be room in a whole one.
  std::string damaged = trimmed;
  damaged[damaged.size() - 1024 + 36 + 4] |= '\x0F';
  open(damaged);
  EXPECT_EQ(save.Run(0b110, 1, 1), SaveEnd::kSaved);
  EXPECT_EQ(save.ToldFirst(), "The recording is damaged: 2 images could not be kept.");
}

TEST(SaveBlockRange, TellsOfAPartialBlockAndFillsItUp) {
  const std::string noise = Picture(2 * kBlock + 700);
  SaveWorld save(noise);
  EXPECT_EQ(save.Run(kWholeBlocks, 2, 3), SaveEnd::kSaved);
  EXPECT_EQ(save.disk.View(kTarget),
            noise.substr(kBlock) + noise.substr(kBlock + 700, kBlock - 700));
  EXPECT_THAT(save.progress.messages, ElementsAre("Error reading file ..."));
}

}  // namespace
