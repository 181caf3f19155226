#include "capture/mdlFileProcessing.h"

#include <algorithm>
#include <array>

#include "capture/capture_time.h"
#include "capture/fields.h"
#include "capture/source_file.h"

namespace mdlFileProcessing {

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

std::int32_t CountBlocks(const SourceFile& source) {
  const std::int32_t count = BlocksInFile(source.Size());
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
ReadEnd ReadBlocks(std::int32_t count, Pacer* pacer, ReadBlock read) {
  for (std::int32_t i = 1; i <= count; ++i) {
    if (!read(i)) return ReadEnd::kFailed;
    if (pacer && !pacer->GoOn(i, count)) return ReadEnd::kStopped;
  }
  return ReadEnd::kDone;
}

/// Reads the stamps and the type of a block (from 1) into the index.
bool IndexBlock(SourceFile& source, DateMemory& dates, std::int32_t block) {
  using namespace format::trailer;
  std::array<std::uint8_t, kBlockType - kStart + 1> bytRecord = {};
  const std::int32_t lngRecordOffset = format::VariantOf(bln20D).trailerOffset + kStart;
  if (!source.Read(block, lngRecordOffset, bytRecord)) return false;
  lngBlockStart[block] = ReadBigEndian(bytRecord, 0, 4);
  lngBlockEnd[block] = ReadBigEndian(bytRecord, kEnd - kStart, 4);
  dtBlockStart[block] = dates.Of(lngBlockStart[block]);
  dtBlockEnd[block] = dates.Of(lngBlockEnd[block]);
  bytBlockStatus = bytRecord.back();
  return true;
}

/// Reads the masks of a block (from 1) of this type into element `k` of the result.
bool ReadMasks(SourceFile& source, const format::BlockType& type, std::int32_t block,
               std::int32_t k) {
  const bool hasAlt = type.cameraMaskAlt != format::kAbsent;
  static_assert(format::types::k20.cameraMask == format::types::k20.cameraMaskAlt + 2);
  std::array<std::uint8_t, 4> bytRecord = {};
  const std::int32_t lngRecordOffset =
      format::VariantOf(bln20D).trailerOffset + (hasAlt ? type.cameraMaskAlt : type.cameraMask);
  if (!source.Read(block, lngRecordOffset, bytRecord)) return false;
  lngCamMask[k] = ReadBigEndian(bytRecord, hasAlt ? 2 : 0, 2);
  if (hasAlt) lngCamMaskAlt[k] = ReadBigEndian(bytRecord, 0, 2);
  return true;
}

}  // namespace

const format::BlockType* SourceType() {
  return format::BlockTypeOf(bln20D, bytBlockStatus);
}

ReadEnd ScanSourceFile(platform::Files& files, platform::DateText& dates, const std::string& path,
                       Pacer* pacer) {
  SizeIndex(0);
  SourceFile source(files, path);
  if (!source.IsOpen()) return ReadEnd::kFailed;
  SizeIndex(CountBlocks(source));
  DateMemory memory(dates);
  const ReadEnd end = ReadBlocks(
      lngBlockCount, pacer, [&](std::int32_t block) { return IndexBlock(source, memory, block); });
  if (end == ReadEnd::kDone)
    return lngBlockCount > 0 && SourceType() ? ReadEnd::kDone : ReadEnd::kNotValid;
  SizeIndex(0);
  return end;
}

ReadEnd CheckAvailability(platform::Files& files, const std::string& path, std::int32_t firstBlock,
                          std::int32_t lastBlock, Pacer* pacer) {
  firstBlock = std::max(firstBlock, 1);
  lastBlock = std::min(lastBlock, lngBlockCount);
  const std::int32_t count = std::max(lastBlock - firstBlock + 1, 0);
  const format::BlockType& type = SourceType() ? *SourceType() : format::types::k30;
  SizeMasks(0, false);
  SourceFile source(files, path);
  if (!source.IsOpen()) return ReadEnd::kFailed;
  SizeMasks(count, type.cameraMaskAlt != format::kAbsent);
  const ReadEnd end = ReadBlocks(
      count, pacer, [&](std::int32_t k) { return ReadMasks(source, type, firstBlock + k - 1, k); });
  if (end != ReadEnd::kDone) SizeMasks(0, false);
  return end;
}

}  // namespace mdlFileProcessing
