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
int lngCameraCount = format::kCameras;
std::uint8_t bytBlockStatus = 0;

OneBased<std::int32_t> lngCamMask;
OneBased<std::int32_t> lngCamMaskAlt;

namespace {

/// Empties the source index, and makes room in it for `count` blocks.
void SizeIndex(std::int32_t count) {
  lngBlockCount = count;
  lngCameraCount = format::kCameras;
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

/// Reads `count` blocks by `read(i)`, i from 1, as long as that is done.
template <typename ReadBlock>
ReadAnswer ReadBlocks(std::int32_t count, Pacer* pacer, ReadBlock read) {
  for (std::int32_t i = 1; i <= count; ++i) {
    ReadAnswer answer = read(i);
    if (answer.end != ReadEnd::kDone) return answer;
    if (pacer && !pacer->GoOn(i, count)) return {ReadEnd::kStopped};
  }
  return {};
}

/// Reads the stamps and the type of a block (from 1) into the index.
ReadAnswer IndexBlock(SourceFile& source, std::int32_t block) {
  using namespace format::trailer;
  constexpr int lngRecordOffset = kStart;
  std::array<std::uint8_t, kBlockType - lngRecordOffset + 1> bytRecord = {};
  if (!source.ReadTrailer(block, lngRecordOffset, bytRecord))
    return {ReadEnd::kFailed, source.Reason()};
  lngBlockStart[block] = ReadBigEndian(bytRecord, kStart - lngRecordOffset, 4);
  lngBlockEnd[block] = ReadBigEndian(bytRecord, kEnd - lngRecordOffset, 4);
  dtBlockStart[block] = DateOfSeconds(lngBlockStart[block]);
  dtBlockEnd[block] = DateOfSeconds(lngBlockEnd[block]);
  bytBlockStatus = bytRecord.back();
  if (SourceType()) lngCameraCount = std::max(lngCameraCount, SourceType()->cameras);
  return {};
}

/// Reads the masks of a block (from 1) into element `k` of the result.
ReadAnswer ReadMasks(SourceFile& source, std::int32_t block, std::int32_t k) {
  constexpr int lngRecordOffset = format::trailer::kBlockType;
  std::array<std::uint8_t, format::types::k20.cameraMask + 2 - lngRecordOffset> bytRecord = {};
  if (!source.ReadTrailer(block, lngRecordOffset, bytRecord))
    return {ReadEnd::kFailed, source.Reason()};
  const format::BlockType* type = format::BlockTypeOf(bln20D, bytRecord.front());
  if (!type) return {};  // A damaged block has no camera.
  if (type->cameras > lngCameraCount)
    return {ReadEnd::kFailed, {platform::Failure::Kind::kChanged}};
  lngCamMask[k] = ReadBigEndian(bytRecord, type->cameraMask - lngRecordOffset, 2);
  if (type->cameraMaskAlt != format::kAbsent)
    lngCamMaskAlt[k] = ReadBigEndian(bytRecord, type->cameraMaskAlt - lngRecordOffset, 2);
  return {};
}

}  // namespace

const format::BlockType* SourceType() {
  return format::BlockTypeOf(bln20D, bytBlockStatus);
}

ReadAnswer ScanSourceFile(platform::Files& files, const std::string& path, Pacer* pacer) {
  SizeIndex(0);
  SourceFile source(files, path);
  if (!source.IsOpen()) return {ReadEnd::kFailed, source.Reason()};
  SizeIndex(source.BlockCount());
  ReadAnswer answer = ReadBlocks(lngBlockCount, pacer,
                                 [&](std::int32_t block) { return IndexBlock(source, block); });
  if (answer.end == ReadEnd::kDone)
    return {lngBlockCount > 0 && SourceType() ? ReadEnd::kDone : ReadEnd::kNotValid};
  SizeIndex(0);
  return answer;
}

ReadAnswer CheckAvailability(platform::Files& files, const std::string& path,
                             std::int32_t firstBlock, std::int32_t lastBlock, Pacer* pacer) {
  firstBlock = std::max(firstBlock, 1);
  lastBlock = std::min(lastBlock, lngBlockCount);
  const std::int32_t count = std::max(lastBlock - firstBlock + 1, 0);
  SizeMasks(0, false);
  SourceFile source(files, path);
  if (!source.IsOpen()) return {ReadEnd::kFailed, source.Reason()};
  SizeMasks(count, lngCameraCount > format::kCameras);
  ReadAnswer answer = ReadBlocks(
      count, pacer, [&](std::int32_t k) { return ReadMasks(source, firstBlock + k - 1, k); });
  if (answer.end != ReadEnd::kDone) SizeMasks(0, false);
  return answer;
}

}  // namespace mdlFileProcessing
