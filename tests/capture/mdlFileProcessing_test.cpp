#include "capture/mdlFileProcessing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "capture/format.h"
#include "platform/posix/posix_disk.h"
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

OneBased<std::uint8_t> BytesOf(const std::string& text) {
  OneBased<std::uint8_t> bytes;
  bytes.Redimension(text.size());
  std::copy(text.begin(), text.end(), bytes.data());
  return bytes;
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
    int valid;
  } kCases[] = {
      {0x30, 0x30, false, 1}, {0x60, 0x10, false, 1}, {0x60, 0x00, false, 1},
      {0x30, 0x20, false, 1}, {0x30, 0x60, false, 0}, {0x30, 0x31, false, 0},
      {0x60, 0x60, true, 1},  {0x60, 0x30, true, 0},  {0x60, 0x00, true, 0},
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
  const std::string recording = Blocks(0x30, {5, 6, 7, 8}).Bytes();
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
  EXPECT_THAT(AsVector(lngBlockStart), ElementsAre(5, 6, 7, 0));
  EXPECT_EQ(dtBlockStart[4], DateOf(1960, 1, 1));
  EXPECT_EQ(bytBlockStatus, 0);
  EXPECT_EQ(Scan("", false).valid, 0) << "although the type left behind would fit";
}

TEST(ScanSourceFile, StampsOf2To31AndMoreWrap) {
  const Scan scan(Blocks(0x30, {-1}).Bytes(), false);
  EXPECT_EQ(scan.valid, 1);
  EXPECT_EQ(lngBlockStart[1], -1);
  EXPECT_NEAR(dtBlockStart[1], DateOf(1959, 12, 31, 23, 59, 59), 1e-6);
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

TEST(ScanSourceFile, FindsBlocksPastFourGiB) {
  const std::string path = testing::TempDir() + "sparse.60D";
  const std::string block = Blocks(0x30, {77}).Bytes();
  constexpr std::int64_t kLast = 2600;
  PosixDisk disk;
  const platform::FileHandle file = disk.Open(path, platform::OpenMode::kWriteNew);
  std::uint32_t written = 0;
  ASSERT_TRUE(disk.Seek(file, (kLast - 1) * format::kBlockSize));
  ASSERT_TRUE(disk.Write(file, block.data(), format::kBlockSize, written));
  disk.Close(file);
  FakeDates dates;
  bln20D = false;
  EXPECT_EQ(ScanSourceFile(disk, dates, path), ReadEnd::kDone);
  EXPECT_EQ(lngBlockCount, kLast);
  EXPECT_EQ(lngBlockStart[kLast], 77);
  EXPECT_EQ(lngBlockStart[kLast - 1], 0);
  disk.Remove(path);
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

TEST(Fields, ReadMostSignificantByteFirst) {
  const auto bytes = BytesOf("\x01\x02\xFF\xFE\xFD\xFC");
  EXPECT_EQ(ReadBigEndian(bytes, 2, 1), 2);
  EXPECT_EQ(ReadBigEndian(bytes, 1, 2), 0x0102);
  EXPECT_EQ(ReadBigEndian(bytes, 2, 3), 0x02FFFE);
  EXPECT_EQ(ReadBigEndian(bytes, 3, 4), -66052);
  EXPECT_EQ(ReadSectorNumber(bytes, 3, 2), 0xFFE);
  EXPECT_EQ(ReadSectorNumber(bytes, 1, 6), 0x1FC);
  EXPECT_THROW(ReadBigEndian(bytes, 4, 4), RuntimeError);
  EXPECT_THROW(ReadBigEndian(bytes, 0, 1), RuntimeError);
  EXPECT_THROW(ReadBigEndian(bytes, 1, 5), RuntimeError);
}

TEST(Fields, StoreWhatFitsAndNothingElse) {
  const struct {
    int length;
    std::int64_t value;
    bool fits;
  } kCases[] = {{1, 255, true},
                {1, 256, false},
                {1, -1, false},
                {2, 0xFFFF, true},
                {2, 0x10000, false},
                {3, 0xABCDEF, true},
                {4, -2, true},
                {4, 0xFFFFFFFE, true},
                {4, INT32_MIN, true},
                {4, 1LL << 32, false},
                {4, INT32_MIN - 1LL, false}};
  for (const auto& c : kCases) {
    OneBased<std::uint8_t> bytes;
    bytes.Redimension(5);
    bytes[c.length + 1] = 0x55;
    if (c.fits) {
      PutBigEndian(bytes.data(), c.length, c.value);
      EXPECT_EQ(static_cast<std::uint32_t>(ReadBigEndian(bytes, 1, c.length)),
                static_cast<std::uint32_t>(c.value));
    } else {
      EXPECT_THROW(PutBigEndian(bytes.data(), c.length, c.value), RuntimeError) << c.value;
      EXPECT_EQ(bytes[1], 0) << "nothing is stored";
    }
    EXPECT_EQ(bytes[c.length + 1], 0x55);
  }
}

TEST(Fields, TitlesAndTextsKeepTheirBytesAndLimits) {
  EXPECT_EQ(ReadTitleField(BytesOf("..CAM 1" + std::string(16, '\0')), 3), "CAM 1");
  EXPECT_EQ(ReadTitleField(BytesOf(std::string(20, 'x')), 1), std::string(16, 'x'));
  EXPECT_EQ(ReadTitleField(BytesOf(std::string(16, '\0')), 1), "");
  const auto text = BytesOf(std::string(500, '\xE4') + "more");
  for (const auto& [asked, given] : {std::pair(700, 500), {500, 500}, {3, 3}, {0, 0}, {-7, 0}}) {
    std::int32_t length = asked;
    EXPECT_EQ(ReadTextField(text, 1, length), std::string(static_cast<std::size_t>(given), '\xE4'));
    EXPECT_EQ(length, std::min(asked, 500));
  }
}

}  // namespace
}  // namespace mdlFileProcessing
