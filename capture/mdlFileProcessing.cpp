#include "capture/mdlFileProcessing.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "capture/block_type.h"
#include "capture/capture_time.h"
#include "capture/source_file.h"
#include "platform/runtime_error.h"

namespace mdlFileProcessing {

platform::FileHandle hSourceFile = platform::FileHandle::kInvalid;
OneBased<std::uint8_t> bytRecord;
std::int32_t lngRecordOffset = 0;
std::int32_t lngBytesRead = 0;
bool bln20D = false;

std::int32_t lngBlockCount = 0;
OneBased<std::int32_t> lngBlockStart;
OneBased<std::int32_t> lngBlockEnd;
OneBased<platform::Date> dtBlockStart;
OneBased<platform::Date> dtBlockEnd;
std::uint8_t bytBlockStatus = 0;

OneBased<std::int32_t> lngCamMask;
OneBased<std::int32_t> lngCamMaskAlt;

namespace {

constexpr char kSource[] = "mdlFileProcessing";

std::int32_t CountBlocks(platform::Files& files) {
  const std::int32_t count = BlocksInFile(FileSize64(files, hSourceFile));
  return count > kMostBlocks ? 0 : count;
}

/// Dates of time stamps. One block often ends in the second in which the next begins, and going
/// through the platform's texts is what a scan spends its time on.
class DateMemory {
 public:
  explicit DateMemory(platform::DateText& dates) : dates_(dates) {}

  platform::Date Of(std::int32_t seconds) {
    if (!filled_ || seconds != seconds_) date_ = DateOfSeconds(dates_, seconds);
    filled_ = true;
    seconds_ = seconds;
    return date_;
  }

 private:
  platform::DateText& dates_;
  bool filled_ = false;
  std::int32_t seconds_ = 0;
  platform::Date date_ = 0;
};

/// Empties the source index, and makes room in it for `count` blocks.
void SizeIndex(std::int32_t count) {
  lngBlockCount = count;
  const auto size = static_cast<std::size_t>(count);
  lngBlockStart.Redimension(size);
  lngBlockEnd.Redimension(size);
  dtBlockStart.Redimension(size);
  dtBlockEnd.Redimension(size);
}

/// Empties the masks, and makes room for `count` blocks.
void SizeMasks(std::int32_t count, bool hasAlt) {
  lngCamMask.Redimension(static_cast<std::size_t>(count));
  lngCamMaskAlt.Redimension(hasAlt ? static_cast<std::size_t>(count) : 0);
}

/// Reads `count` blocks by `read(i)`, i from 1, which tells whether that went well.
template <typename ReadBlock>
ReadEnd ReadBlocks(std::int32_t count, Breathing* breathing, ReadBlock read) {
  for (std::int32_t i = 1; i <= count; ++i) {
    if (!read(i)) return ReadEnd::kFailed;
    if (breathing && !breathing->GoOn(i, count)) return ReadEnd::kStopped;
  }
  return ReadEnd::kDone;
}

/// Reads the stamps and the type of block `block` (from 1) into the index.
bool IndexBlock(platform::Files& files, DateMemory& dates, std::int32_t block) {
  constexpr int kFirst = format::trailer::kStart;
  constexpr int kLength = format::trailer::kBlockType - kFirst + 1;
  if (!ReadRecord(files, block - 1, lngRecordOffset, kLength)) return false;
  lngBlockStart[block] = ReadBigEndian(bytRecord, 1, 4);
  lngBlockEnd[block] = ReadBigEndian(bytRecord, format::trailer::kEnd - kFirst + 1, 4);
  dtBlockStart[block] = dates.Of(lngBlockStart[block]);
  dtBlockEnd[block] = dates.Of(lngBlockEnd[block]);
  bytBlockStatus = bytRecord[kLength];
  return true;
}

/// Reads the masks of block `block` (from 0) into element `k` of the result.
bool ReadMasks(platform::Files& files, std::int32_t block, std::int32_t k) {
  const bool hasAlt = lngCamMaskAlt.UpperBound() != 0;
  static_assert(format::types::k20.cameraMask == format::types::k20.cameraMaskAlt + 2);
  if (!ReadRecord(files, block, lngRecordOffset, hasAlt ? 4 : 2)) return false;
  lngCamMask[k] = ReadBigEndian(bytRecord, hasAlt ? 3 : 1, 2);
  if (hasAlt) lngCamMaskAlt[k] = ReadBigEndian(bytRecord, 1, 2);
  return true;
}

}  // namespace

const format::BlockType* SourceType() {
  return format::BlockTypeOf(bln20D, bytBlockStatus);
}

ReadEnd ScanSourceFile(platform::Files& files, platform::DateText& dates, const std::string& path,
                       Breathing* breathing) {
  SizeIndex(0);
  const SourceFile source(files, path);
  if (!source.IsOpen()) return ReadEnd::kFailed;
  SizeIndex(CountBlocks(files));
  lngRecordOffset = format::VariantOf(bln20D).trailerOffset + format::trailer::kStart;
  DateMemory memory(dates);
  const ReadEnd end = ReadBlocks(lngBlockCount, breathing, [&](std::int32_t block) {
    return IndexBlock(files, memory, block);
  });
  if (end == ReadEnd::kDone)
    return lngBlockCount > 0 && SourceType() ? ReadEnd::kDone : ReadEnd::kNotValid;
  SizeIndex(0);
  return end;
}

ReadEnd CheckAvailability(platform::Files& files, const std::string& path, std::int32_t firstBlock,
                          std::int32_t lastBlock, Breathing* breathing) {
  firstBlock = std::max(firstBlock, 1);
  lastBlock = std::min(lastBlock, lngBlockCount);
  const std::int32_t count = std::max(lastBlock - firstBlock + 1, 0);
  const format::BlockType& type = SourceType() ? *SourceType() : format::types::k30;
  const bool hasAlt = type.cameraMaskAlt != format::kAbsent;
  SizeMasks(0, false);
  lngRecordOffset =
      format::VariantOf(bln20D).trailerOffset + (hasAlt ? type.cameraMaskAlt : type.cameraMask);
  const SourceFile source(files, path);
  if (!source.IsOpen()) return ReadEnd::kFailed;
  SizeMasks(count, hasAlt);
  const ReadEnd end = ReadBlocks(
      count, breathing, [&](std::int32_t k) { return ReadMasks(files, firstBlock + k - 2, k); });
  if (end != ReadEnd::kDone) SizeMasks(0, false);
  return end;
}

double FileSize64(platform::Files& files, platform::FileHandle file) {
  constexpr std::uint64_t kLowHalf = 0xFFFFFFFF;
  const std::uint64_t size = files.Size(file).value_or(0);
  return (size & kLowHalf) == kLowHalf ? 0 : static_cast<double>(size);
}

std::int32_t BlocksInFile(double size) {
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  const double blocks = std::nearbyint(size / format::kBlockSize);  // Halves to even.
  return blocks > 0 ? static_cast<std::int32_t>(std::min(blocks, kMost)) : 0;
}

bool SeekBlock(platform::Files& files, std::int32_t block, std::int32_t offset) {
  return files.Seek(hSourceFile, std::int64_t{block} * format::kBlockSize + offset);
}

bool ReadRecord(platform::Files& files, std::int32_t block, std::int32_t offset,
                std::int32_t count) {
  bytRecord.Redimension(static_cast<std::size_t>(std::max(count, 0)));
  lngBytesRead = 0;
  if (!SeekBlock(files, block, offset)) return false;
  std::uint32_t bytesRead = 0;
  const bool read = files.Read(hSourceFile, bytRecord.data(),
                               static_cast<std::uint32_t>(bytRecord.UpperBound()), bytesRead);
  lngBytesRead = static_cast<std::int32_t>(bytesRead);
  return read;
}

std::int32_t ReadBigEndian(const OneBased<std::uint8_t>& bytes, int start, int length) {
  if (length < 1 || length > 4) throw RuntimeError::InvalidProcedureCall(kSource);
  std::uint32_t value = 0;
  for (int k = 0; k < length; ++k) value = value << 8 | bytes[start + k];
  return static_cast<std::int32_t>(value);
}

void PutBigEndian(std::uint8_t* bytes, int length, std::int64_t value) {
  if (length < 1 || length > 4) throw RuntimeError::InvalidProcedureCall(kSource);
  const std::int64_t least = length == 4 ? std::numeric_limits<std::int32_t>::min() : 0;
  const std::int64_t limit = std::int64_t{1} << 8 * length;
  if (value < least || value >= limit) throw RuntimeError::Overflow(kSource);
  for (int k = 0; k < length; ++k)
    bytes[k] = static_cast<std::uint8_t>(value >> 8 * (length - 1 - k) & 0xFF);
}

std::int32_t ReadSectorNumber(const OneBased<std::uint8_t>& bytes, int index, int width) {
  return (bytes[index] & 15) * 256 + bytes[index + width - 1];
}

std::string ReadTitleField(const OneBased<std::uint8_t>& bytes, int start) {
  std::string title;
  for (int k = 0; k < format::tail::kTitleRead && bytes[start + k] != 0; ++k)
    title += static_cast<char>(bytes[start + k]);
  return title;
}

std::string ReadTextField(const OneBased<std::uint8_t>& bytes, int start, std::int32_t& length) {
  length = std::min(length, format::text::kRoom);
  std::string text;
  for (int k = 0; k < length; ++k) text += static_cast<char>(bytes[start + k]);
  return text;
}

}  // namespace mdlFileProcessing
