#include "capture/source_file.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "capture/format.h"

namespace mdlFileProcessing {

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

}  // namespace mdlFileProcessing

SourceFile::SourceFile(platform::Files& files, const std::string& path)
    : files_(files), hSourceFile(files.Open(path, platform::OpenMode::kReadExisting)) {}

SourceFile::~SourceFile() {
  if (IsOpen()) files_.Close(hSourceFile);
}

std::optional<std::int32_t> SourceFile::Read(std::int32_t block, std::int32_t offset,
                                             std::span<std::uint8_t> bytes) {
  std::uint32_t lngBytesRead = 0;
  if (!SeekBlock(block, offset) ||
      !files_.Read(hSourceFile, bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                   lngBytesRead))
    return std::nullopt;
  return static_cast<std::int32_t>(lngBytesRead);
}

bool SourceFile::SeekBlock(std::int32_t block, std::int32_t offset) {
  return files_.Seek(hSourceFile, (std::int64_t{block} - 1) * format::kBlockSize + offset);
}
