#include "capture/mdlFileProcessing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "capture/format.h"
#include "capture/source_file.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"

namespace mdlFileProcessing {
namespace {

using testing::ElementsAre;

constexpr std::size_t kMiB = 1024 * 1024;

template <typename T>
std::vector<T> AsVector(const OneBased<T>& array) {
  return {array.data(), array.data() + array.UpperBound()};
}

class Source : public testing::Test {
 protected:
  ~Source() override { EXPECT_EQ(disk.OpenHandles(), 0u); }
  ReadEnd Scan(const std::string& recording, bool is20D = false) {
    disk.Put("r", recording);
    bln20D = is20D;
    return ScanSourceFile(disk, "r").end;
  }

  /// A disk that may claim a size for its files.
  struct LyingDisk : MemoryDisk {
    std::optional<std::uint64_t> claimed;
    std::optional<std::uint64_t> Size(platform::FileHandle file) override {
      return claimed ? claimed : MemoryDisk::Size(file);
    }
  } disk;
};

std::string Blocks(int type, const std::vector<std::int32_t>& starts) {
  std::vector<BlockPlan> blocks;
  for (const std::int32_t start : starts) blocks.push_back({.stamps = {{start, start + 10}}});
  return Recording(type, blocks);
}

TEST_F(Source, IsWhatTheLastBlocksTypeSays) {
  const struct {
    int first, last;
    bool is20D;
    ReadEnd end;
  } kCases[] = {
      {0x60, 0x10, false, ReadEnd::kDone}, {0x60, 0x00, false, ReadEnd::kDone},
      {0x30, 0x20, false, ReadEnd::kDone}, {0x30, 0x60, false, ReadEnd::kNotValid},
      {0x60, 0x60, true, ReadEnd::kDone},  {0x60, 0x30, true, ReadEnd::kNotValid},
  };
  for (const auto& c : kCases) {
    // The type's place follows the file's kind, whatever the type is.
    const int kind = c.is20D ? 0x60 : 0x30;
    const auto place = static_cast<std::size_t>(LayoutOf(kind).trailer) + 13;
    std::string recording = Blocks(kind, {1, 2});
    recording[place] = static_cast<char>(c.first);
    recording[2 * kMiB + place] = static_cast<char>(c.last);
    EXPECT_EQ(Scan(recording, c.is20D), c.end) << c.first << ", " << c.last << ", " << c.is20D;
    EXPECT_EQ(bytBlockStatus, c.last);
    EXPECT_THAT(AsVector(lngBlockStart), ElementsAre(1, 2));
    EXPECT_THAT(AsVector(lngBlockEnd), ElementsAre(11, 12));
  }
}

TEST_F(Source, HasBlocksByRoundingHalvesToEven) {
  const std::string recording = Blocks(0x30, {-1, 6, 7, 8});
  const std::pair<std::size_t, int> kCounts[] = {{0, 0},        {kMiB, 0},     {kMiB + 1, 1},
                                                 {3 * kMiB, 2}, {5 * kMiB, 2}, {5 * kMiB + 1, 3},
                                                 {6 * kMiB, 3}, {7 * kMiB, 4}};
  for (const auto& [size, count] : kCounts) {
    EXPECT_EQ(Scan(recording.substr(0, size)), count > 0 ? ReadEnd::kDone : ReadEnd::kNotValid);
    EXPECT_EQ(lngBlockCount, count) << size;
    EXPECT_EQ(dtBlockEnd.UpperBound(), count) << size;
  }
  // The trailer of the fourth block lies past the end of the file.
  EXPECT_THAT(AsVector(lngBlockStart), ElementsAre(-1, 6, 7, 0));
  EXPECT_NEAR(dtBlockStart[1], DateOf(2096, 2, 6, 6, 28, 15), 1e-6);
  EXPECT_EQ(dtBlockStart[4], DateOf(1960, 1, 1));
  EXPECT_EQ(bytBlockStatus, 0);
}

/// A file that the program itself has rebuilt, or a recorder's, cut in the same way.
TEST_F(Source, MayEndInAShortBlock) {
  for (const int type : {0x00, 0x10, 0x20, 0x30, 0x60}) {
    const BlockPlan block = {.images = {{.camera = 3, .seconds = 5}}, .stamps = {{7, 9}}};
    for (const int whole : {0, 2}) {
      const std::vector<BlockPlan> blocks(static_cast<std::size_t>(whole) + 1, block);
      EXPECT_EQ(Scan(Shortened(Recording(type, blocks), type), type == 0x60), ReadEnd::kDone);
      EXPECT_EQ(lngBlockCount, whole + 1) << type;
      EXPECT_THAT(lngBlockStart[whole + 1], 7) << type;
      EXPECT_EQ(CheckAvailability(disk, "r", whole + 1, whole + 1).end, ReadEnd::kDone);
      EXPECT_THAT(AsVector(lngCamMask), ElementsAre(8)) << type;
      EXPECT_TRUE(SourceFile(disk, "r").IsRecording());
    }
  }
}

TEST_F(Source, EndsInNoShortBlockUnlessItsTrailerSaysJustThat) {
  using namespace std::string_literals;
  const std::string whole = Recording(0x30, {{.images = {{}}}});
  const std::string data = whole.substr(0, 512), trailer = Shortened(whole, 0x30).substr(512);
  const auto with = [&](std::size_t place, const std::string& bytes) {
    return data + std::string(trailer).replace(place, bytes.size(), bytes);
  };
  for (const std::string& end :
       {trailer, "!"s + data + trailer, data + data + trailer, data + trailer + '\0',
        data + trailer.substr(1), with(13, "\x60"), with(32, "\0\0\0\0\0\3"s), with(32, "\0\xF7"s),
        with(32, "\xFF\xFF"), with(40, "\0\2"s), with(40, "\0\2"s).substr(512),
        with(40, "\x10\3")}) {
    EXPECT_EQ(Scan(whole + end), ReadEnd::kDone);
    EXPECT_EQ(lngBlockCount, 1);
    EXPECT_FALSE(SourceFile(disk, "r").IsRecording());
  }
  EXPECT_EQ(Scan(whole + data + trailer), ReadEnd::kDone);
  EXPECT_EQ(lngBlockCount, 2);
  for (const auto& [blocks, isRecording] : {std::pair(0, false), {1, false}, {2, true}}) {
    disk.Put("r", std::string(blocks * kBlock, '\0'));
    EXPECT_EQ(SourceFile(disk, "r").IsRecording(), isRecording) << blocks;
  }
}

TEST_F(Source, HasNoSizeThatNoRecordingHas) {
  for (const std::uint64_t size :
       {std::uint64_t{0xFFFFFFFF}, std::uint64_t{kMostBlocks + 1} * format::kBlockSize,
        std::uint64_t{1} << 62, ~std::uint64_t{1} << 32}) {
    disk.claimed.reset();
    Scan(Blocks(0x30, {5}));
    disk.claimed = size;
    EXPECT_EQ(Scan(""), ReadEnd::kNotValid) << size;
    EXPECT_EQ(lngBlockCount, 0) << size;
    EXPECT_EQ(lngBlockStart.UpperBound(), 0) << size;
  }
}

/// Each block is read by its own type, whatever the last one is.
TEST_F(Source, HasTheCamerasOfTheRange) {
  using Masks = std::vector<std::int32_t>;
  const auto block = [](int type, int camera) {
    return Recording(type, {{.images = {{.camera = camera}, {.camera = 2}}}});
  };
  std::string damaged = block(0x30, 5);
  damaged[static_cast<std::size_t>(LayoutOf(0x30).trailer) + 13] = 0x50;
  const std::string with20 =
      block(0x20, 31) + block(0x30, 0) + damaged + block(0x10, 15) + std::string(kBlock, '\0');
  const std::string without = block(0x30, 0) + damaged + block(0x00, 4);
  const std::string of20D = block(0x60, 0) + block(0x60, 15);
  const struct {
    const std::string& recording;
    bool is20D;
    Masks low, high;
  } kCases[] = {{with20, false, {4, 5, 0, 0x8004, 0}, {0x8000, 0, 0, 0, 0}},
                {without, false, {5, 0, 0x14}, {}},
                {of20D, true, {5, 0x8004}, {}}};
  for (const auto& c : kCases) {
    EXPECT_EQ(Scan(c.recording, c.is20D), ReadEnd::kDone);
    EXPECT_EQ(lngCameraCount, c.high.empty() ? 16 : 32);
    CheckAvailability(disk, "r", 1, 100);
    EXPECT_EQ(AsVector(lngCamMask), c.low);
    EXPECT_EQ(AsVector(lngCamMaskAlt), c.high);
    CheckAvailability(disk, "r", -1, 1);
    EXPECT_EQ(AsVector(lngCamMask), Masks{c.low.front()});
    CheckAvailability(disk, "r", 2, 1);
    EXPECT_EQ(lngCamMask.UpperBound(), 0);
  }
  EXPECT_EQ(Scan(without), ReadEnd::kDone);
  disk.Put("r", with20);
  EXPECT_EQ(CheckAvailability(disk, "r", 1, 3).why.kind, platform::Failure::Kind::kChanged);
}

TEST_F(Source, IsClosedAndToldOfWhateverCallFails) {
  const std::string recording = Blocks(0x30, {1, 2, 3});
  ForEachFault([&](Fault& fault) {
    disk.fault = {};
    Scan(recording);
    disk.fault = fault;
    disk.fault.reason = {platform::Failure::Kind::kNoAnswer};
    const ReadAnswer scanned = ScanSourceFile(disk, "r");
    const int indexed = lngBlockStart.UpperBound();
    const ReadAnswer checked = CheckAvailability(disk, "r", 1, 3);
    fault = disk.fault;
    EXPECT_EQ(disk.OpenHandles(), 0u) << fault;
    EXPECT_EQ(disk.View("r"), recording) << fault;
    // What ends early reads as zeros.
    const bool isReading = !fault.met.empty() && fault.met != "close";
    const bool fails = isReading && fault.kind == Fault::Kind::kError;
    EXPECT_EQ(scanned.end == ReadEnd::kFailed || checked.end == ReadEnd::kFailed, fails) << fault;
    for (const auto& [end, why] : {scanned, checked})
      EXPECT_EQ(why.kind == fault.reason.kind, end == ReadEnd::kFailed) << fault;
    EXPECT_EQ(indexed, scanned.end == ReadEnd::kDone ? 3 : 0) << fault;
    EXPECT_EQ(lngCamMask.UpperBound(), checked.end == ReadEnd::kDone ? lngBlockCount : 0) << fault;
  });
}

TEST_F(Source, IsReadWithABreathFiftyTimesASecondUntilItIsStopped) {
  disk.claimed = std::uint64_t{200} * format::kBlockSize;
  FakeClock clock;
  clock.step = std::chrono::milliseconds(6);
  std::vector<int> breaths;
  const auto read = [&](bool scan, int lastBreath) {
    breaths.clear();
    Pacer pacer(clock, [&](std::int32_t done, std::int32_t total) {
      EXPECT_EQ(total, 200);
      breaths.push_back(done);
      return done < lastBreath;
    });
    return (scan ? ScanSourceFile(disk, "r", &pacer) : CheckAvailability(disk, "r", 1, 200, &pacer))
        .end;
  };
  for (const bool scan : {true, false}) {
    EXPECT_EQ(Scan(""), ReadEnd::kDone);
    EXPECT_EQ(read(scan, 8), ReadEnd::kStopped);
    EXPECT_THAT(breaths, ElementsAre(4, 8));
    EXPECT_EQ((scan ? lngBlockStart : lngCamMask).UpperBound(), 0);
  }
}

}  // namespace
}  // namespace mdlFileProcessing
