#include "capture/mdlFileProcessing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "capture/format.h"
#include "tests/support/fake_clock.h"
#include "tests/support/fake_dates.h"
#include "tests/support/memory_disk.h"
#include "tests/support/recording_builder.h"

namespace mdlFileProcessing {
namespace {

using testing::ElementsAre;

constexpr std::size_t kMiB = 1024 * 1024;

template <typename T>
std::vector<T> AsVector(const OneBased<T>& array) {
  return {array.data(), array.data() + array.UpperBound()};
}

/// Scans `recording` as a file of its own.
class Scan {
 public:
  Scan(const std::string& recording, bool is20D) {
    disk.Put("r", recording);
    bln20D = is20D;
    valid = ScanSourceFile(disk, dates, "r") == ReadEnd::kDone;
  }
  ~Scan() {
    EXPECT_EQ(disk.OpenHandles(), 0u);
    EXPECT_EQ(hSourceFile, platform::FileHandle::kInvalid);
  }

  MemoryDisk disk;
  FakeDates dates;
  bool valid;
};

RecordingBuilder Blocks(int type, std::vector<std::int32_t> starts) {
  RecordingBuilder recording(type);
  for (const std::int32_t start : starts) recording.Block().Stamps(start, start + 10);
  return recording;
}

TEST(ScanSourceFile, TheLastBlocksTypeDecides) {
  const struct {
    int first, last;
    bool is20D;
    bool valid;
  } kCases[] = {
      {0x60, 0x10, false, true},  {0x60, 0x00, false, true}, {0x30, 0x20, false, true},
      {0x30, 0x60, false, false}, {0x60, 0x60, true, true},  {0x60, 0x30, true, false},
  };
  for (const auto& c : kCases) {
    // The type's place follows the file's kind, whatever the type is.
    const RecordingBuilder kind(c.is20D ? 0x60 : 0x30);
    std::string recording = Blocks(c.is20D ? 0x60 : 0x30, {1, 2}).Bytes();
    recording[kind.TrailerOffset() + 13] = static_cast<char>(c.first);
    recording[2 * kMiB + kind.TrailerOffset() + 13] = static_cast<char>(c.last);
    const Scan scan(recording, c.is20D);
    EXPECT_EQ(scan.valid, c.valid) << c.first << ", " << c.last << ", " << c.is20D;
    EXPECT_EQ(bytBlockStatus, c.last);
    EXPECT_THAT(AsVector(lngBlockStart), ElementsAre(1, 2));
    EXPECT_THAT(AsVector(lngBlockEnd), ElementsAre(11, 12));
  }
}

TEST(ScanSourceFile, CountsBlocksByRoundingHalvesToEven) {
  const std::string recording = Blocks(0x30, {-1, 6, 7, 8}).Bytes();
  const std::pair<std::size_t, int> kCounts[] = {{0, 0},        {kMiB, 0},     {kMiB + 1, 1},
                                                 {3 * kMiB, 2}, {5 * kMiB, 2}, {5 * kMiB + 1, 3},
                                                 {6 * kMiB, 3}, {7 * kMiB, 4}};
  for (const auto& [size, count] : kCounts) {
    const Scan scan(recording.substr(0, size), false);
    EXPECT_EQ(lngBlockCount, count) << size;
    EXPECT_EQ(scan.valid, count > 0 ? 1 : 0) << size;
    EXPECT_EQ(dtBlockEnd.UpperBound(), count) << size;
  }
  // The trailer of the fourth block lies past the end of the file.
  EXPECT_THAT(AsVector(lngBlockStart), ElementsAre(-1, 6, 7, 0));
  EXPECT_NEAR(dtBlockStart[1], DateOf(1959, 12, 31, 23, 59, 59), 1e-6);
  EXPECT_EQ(dtBlockStart[4], DateOf(1960, 1, 1));
  EXPECT_EQ(bytBlockStatus, 0);
  EXPECT_EQ(Scan("", false).valid, 0) << "although the type left behind would fit";
}

/// A disk that claims a size for every file.
class LyingDisk : public MemoryDisk {
 public:
  explicit LyingDisk(std::uint64_t size) : size_(size) {}
  std::optional<std::uint64_t> Size(platform::FileHandle) override { return size_; }

 private:
  std::uint64_t size_;
};

TEST(ScanSourceFile, RefusesSizesThatNoRecordingHas) {
  const Scan before(Blocks(0x30, {5}).Bytes(), false);
  for (const std::uint64_t size :
       {std::uint64_t{0xFFFFFFFF}, std::uint64_t{kMostBlocks + 1} * format::kBlockSize,
        std::uint64_t{1} << 62, ~std::uint64_t{1} << 32}) {
    LyingDisk disk(size);
    disk.Put("r", "");
    FakeDates dates;
    EXPECT_EQ(ScanSourceFile(disk, dates, "r"), ReadEnd::kNotValid) << size;
    EXPECT_EQ(lngBlockCount, 0) << size;
    EXPECT_EQ(lngBlockStart.UpperBound(), 0) << size;
    EXPECT_EQ(disk.OpenHandles(), 0u);
  }
}

TEST(CheckAvailability, ReadsTheMasksOfTheRange) {
  for (const int type : {0x00, 0x10, 0x20, 0x30, 0x60}) {
    RecordingBuilder recording(type);
    for (const int camera : {0, 1, 4, 15})
      recording.Block().Image({.camera = camera}).Image({.camera = 2});
    if (type == 0x20) recording.Block().Image({.camera = 16}).Image({.camera = 31});
    Scan scan(recording.Bytes(), type == 0x60);
    CheckAvailability(scan.disk, "r", 2, 100);
    if (type == 0x20) {
      EXPECT_THAT(AsVector(lngCamMask), ElementsAre(0x0006, 0x0014, 0x8004, 0));
      EXPECT_THAT(AsVector(lngCamMaskAlt), ElementsAre(0, 0, 0, 0x8001));
    } else {
      EXPECT_THAT(AsVector(lngCamMask), ElementsAre(0x0006, 0x0014, 0x8004)) << type;
      EXPECT_EQ(lngCamMaskAlt.UpperBound(), 0);
    }
    CheckAvailability(scan.disk, "r", -1, 1);
    EXPECT_EQ(lngCamMask.UpperBound(), 1);
    CheckAvailability(scan.disk, "r", 3, 2);
    EXPECT_EQ(lngCamMask.UpperBound(), 0);
  }
}

TEST(Reading, IsClosedAndToldWhateverCallFails) {
  const std::string recording = Blocks(0x30, {1, 2, 3}).Bytes();
  ForEachFault([&](Fault& fault) {
    MemoryDisk disk;
    disk.Put("r", recording);
    disk.fault = fault;
    FakeDates dates;
    bln20D = false;
    const ReadEnd scanned = ScanSourceFile(disk, dates, "r");
    const int indexed = lngBlockStart.UpperBound();
    const ReadEnd checked = CheckAvailability(disk, "r", 1, 3);
    fault = disk.fault;
    EXPECT_EQ(disk.OpenHandles(), 0u) << fault;
    EXPECT_EQ(hSourceFile, platform::FileHandle::kInvalid) << fault;
    EXPECT_EQ(disk.View("r"), recording) << fault;
    // What ends early reads as zeros, and a file without a size has no blocks.
    const bool isReading = fault.met == "open" || fault.met == "seek" || fault.met == "read";
    const bool fails = isReading && fault.kind == Fault::Kind::kError;
    EXPECT_EQ(scanned == ReadEnd::kFailed || checked == ReadEnd::kFailed, fails) << fault;
    EXPECT_EQ(indexed, scanned == ReadEnd::kDone ? 3 : 0) << fault;
    EXPECT_EQ(lngCamMask.UpperBound(), checked == ReadEnd::kDone ? lngBlockCount : 0) << fault;
  });
}

TEST(Reading, BreathesEvery64BlocksOrTenthOfASecondUntilItIsStopped) {
  LyingDisk disk(std::uint64_t{200} * format::kBlockSize);
  disk.Put("r", "");
  FakeDates dates;
  FakeClock clock;
  std::vector<int> breaths;
  bln20D = false;
  const auto read = [&](bool scan, int lastBreath) {
    breaths.clear();
    Breathing breathing(clock, [&](std::int32_t done, std::int32_t total) {
      EXPECT_EQ(total, 200);
      breaths.push_back(done);
      return done < lastBreath;
    });
    return scan ? ScanSourceFile(disk, dates, "r", &breathing)
                : CheckAvailability(disk, "r", 1, 200, &breathing);
  };
  for (const bool scan : {true, false}) {
    clock.step = FakeClock::Duration::zero();
    EXPECT_EQ(read(true, 200), ReadEnd::kDone);
    EXPECT_EQ(read(scan, 200), ReadEnd::kDone);
    EXPECT_THAT(breaths, ElementsAre(64, 128, 192));
    clock.step = std::chrono::milliseconds(30);
    EXPECT_EQ(read(scan, 8), ReadEnd::kStopped);
    EXPECT_THAT(breaths, ElementsAre(4, 8));
    EXPECT_EQ((scan ? lngBlockStart : lngCamMask).UpperBound(), 0);
  }
}

TEST(Fields, AreReadMostSignificantByteFirst) {
  OneBased<std::uint8_t> bytes;
  bytes.Redimension(6);
  std::ranges::copy(std::string_view("\x01\x02\xFF\xFE\xFD\xFC"), bytes.data());
  EXPECT_EQ(ReadBigEndian(bytes, 2, 1), 2);
  EXPECT_EQ(ReadBigEndian(bytes, 2, 3), 0x02FFFE);
  EXPECT_EQ(ReadBigEndian(bytes, 3, 4), -66052);
  EXPECT_EQ(ReadSectorNumber(bytes, 3, 2), 0xFFE);
  EXPECT_EQ(ReadSectorNumber(bytes, 1, 6), 0x1FC);
  for (const auto& [start, length] : {std::pair(4, 4), {0, 1}, {1, 0}, {1, 5}})
    EXPECT_THROW(ReadBigEndian(bytes, start, length), RuntimeError);
}

TEST(Fields, StoreWhatFitsAndNothingElse) {
  const struct {
    int length;
    std::int64_t value;
    const char* stored;  // Null when the value does not fit.
  } kCases[] = {{1, 255, "\xFF..."},
                {1, 256, nullptr},
                {1, -1, nullptr},
                {2, 0x10000, nullptr},
                {3, 0xABCDEF, "\xAB\xCD\xEF."},
                {4, -2, "\xFF\xFF\xFF\xFE"},
                {4, 0xFFFFFFFE, "\xFF\xFF\xFF\xFE"},
                {4, 1LL << 32, nullptr},
                {4, INT32_MIN - 1LL, nullptr}};
  for (const auto& c : kCases) {
    std::string bytes = "....";
    const auto put = [&] {
      PutBigEndian(reinterpret_cast<std::uint8_t*>(bytes.data()), c.length, c.value);
    };
    if (c.stored)
      put();
    else
      EXPECT_THROW(put(), RuntimeError);
    EXPECT_EQ(bytes, c.stored ? c.stored : "....") << c.value;
  }
}

}  // namespace
}  // namespace mdlFileProcessing
