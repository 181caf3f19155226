#include "capture/source_file.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "capture/block_type.h"
#include "capture/fields.h"
#include "capture/mdlFileProcessing.h"

using mdlFileProcessing::bln20D;
using mdlFileProcessing::kMostBlocks;
using mdlFileProcessing::ReadBigEndian;

namespace mdlFileProcessing {

std::optional<double> FileSize64(platform::Files& files, platform::FileHandle file) {
  constexpr std::uint64_t kLowHalf = 0xFFFFFFFF;
  const std::optional<std::uint64_t> size = files.Size(file);
  if (!size) return {};
  return (*size & kLowHalf) == kLowHalf ? 0 : static_cast<double>(*size);
}

std::int32_t BlocksInFile(double size) {
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  const double blocks = std::nearbyint(size / format::kBlockSize);  // Halves to even.
  return blocks > 0 ? static_cast<std::int32_t>(std::min(blocks, kMost)) : 0;
}

}  // namespace mdlFileProcessing

namespace {

constexpr std::int32_t kFewestBlocks = 2;  ///< Whole ones.

/// Whether this is the trailer of a block that has `place` bytes of data right before it, as a
/// rebuilt file ends.
bool IsTrailerBehind(std::int32_t place, mdlFileProcessing::Bytes trailer, bool is20D) {
  const format::BlockType* type = format::BlockTypeOf(is20D, trailer[format::trailer::kBlockType]);
  if (!type) return false;
  const std::int32_t count = ReadBigEndian(trailer, type->imageCount, 2);
  if (count < 1 || count > type->MostImages()) return false;
  const int end = type->entryList + count * type->entry.size + type->entry.sector;
  return ReadBigEndian(trailer, end, 2) ==
         place / format::kSectorSize + type->variant().trailerSectors;
}

}  // namespace

SourceFile::SourceFile(platform::Files& files, const std::string& path)
    : files_(files),
      variant_(format::VariantOf(mdlFileProcessing::bln20D)),
      hSourceFile(files.Open(path, platform::OpenMode::kReadExisting)) {
  if (!IsOpen()) reason_ = files_.LastFailure();
  if (IsOpen() && !Measure()) Close();
}

SourceFile::~SourceFile() {
  if (IsOpen()) Close();
}

void SourceFile::Close() {
  files_.Close(std::exchange(hSourceFile, platform::FileHandle::kInvalid));
}

/// Finds out where the file ends. False when that cannot be read.
bool SourceFile::Measure() {
  const auto size = mdlFileProcessing::FileSize64(files_, hSourceFile);
  if (!size) {
    reason_ = files_.LastFailure();
    return false;
  }
  const double whole = std::floor(*size / format::kBlockSize);
  const auto lngBlockRemainder = static_cast<std::int32_t>(*size - whole * format::kBlockSize);
  blockCount_ = mdlFileProcessing::BlocksInFile(*size);
  if (blockCount_ > kMostBlocks) blockCount_ = 0;
  isRecording_ = lngBlockRemainder == 0 && blockCount_ >= kFewestBlocks;
  const std::int32_t place = lngBlockRemainder - variant_.trailerLength;
  if (place <= 0 || place % format::kSectorSize != 0 || whole >= kMostBlocks) return true;
  std::vector<std::uint8_t> trailer(static_cast<std::size_t>(variant_.trailerLength));
  const auto last = static_cast<std::int32_t>(whole) + 1;
  const auto read = Read(last, place, trailer);
  if (read == variant_.trailerLength && IsTrailerBehind(place, trailer, bln20D)) {
    blockCount_ = last;
    shortLength_ = lngBlockRemainder;
    isRecording_ = true;
  }
  return read.has_value();
}

std::optional<std::int32_t> SourceFile::Read(std::int32_t block, std::int32_t offset,
                                             std::span<std::uint8_t> bytes) {
  std::uint32_t lngBytesRead = 0;
  if (!SeekBlock(block, offset) ||
      !files_.Read(hSourceFile, bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                   lngBytesRead)) {
    reason_ = files_.LastFailure();
    return std::nullopt;
  }
  return static_cast<std::int32_t>(lngBytesRead);
}

std::optional<std::int32_t> SourceFile::ReadTrailer(std::int32_t block, std::int32_t offset,
                                                    std::span<std::uint8_t> bytes) {
  return Read(block, TrailerOf(block) + offset, bytes);
}

bool SourceFile::SeekBlock(std::int32_t block, std::int32_t offset) {
  return files_.Seek(hSourceFile, (std::int64_t{block} - 1) * format::kBlockSize + offset);
}
