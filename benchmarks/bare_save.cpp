#include "benchmarks/bare_save.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "platform/posix/posix_disk.h"
#include "save/camera_index.h"
#include "tests/support/fake_dates.h"

BareSave::BareSave(const std::string& source, std::int32_t cameras) {
  PosixDisk disk;
  FakeDates dates;
  mdlFileProcessing::ScanSourceFile(disk, dates, source);
  const std::int32_t count = mdlFileProcessing::lngBlockCount;
  IndexBlockRange(disk, source, 1, count);
  constexpr std::int64_t kTrailer = format::kVariant60D.trailerOffset;
  for (std::int32_t b = 1; b <= count; ++b) {
    const std::int64_t block = (b - 1) * std::int64_t{format::kBlockSize};
    const auto& indexed = cameraIndex.blocks[b].images;
    lists.emplace_back(block + kTrailer + format::trailer30::kImageCount, 3);
    lists.emplace_back(block + kTrailer + format::trailer30::kEntryList,
                       indexed.size() * format::entry30::kSize + format::kEndEntryLength);
    for (const IndexedImage& image : indexed) {
      if ((cameras >> image.camera & 1) == 0) continue;
      const std::int64_t sector = image.startSector - format::kVariant60D.trailerSectors;
      const std::size_t sectors = image.endSector - image.startSector;
      AddImage(block + sector * format::kSectorSize, sectors * format::kSectorSize);
    }
  }
  cameraIndex = CameraIndex();
}

void BareSave::AddImage(std::int64_t offset, std::size_t bytes) {
  const bool follows =
      !images.empty() &&
      images.back().first + static_cast<std::int64_t>(images.back().second) == offset;
  if (follows) {
    images.back().second += bytes;
  } else {
    images.emplace_back(offset, bytes);
  }
}

void BareSave::Run(const std::string& source, const std::string& target) const {
  const int from = open(source.c_str(), O_RDONLY | O_CLOEXEC);
  const int to = open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  std::vector<char> buffer(format::kBlockSize);
  bool whole = true;
  std::size_t filled = 0;
  const auto fetch = [&](std::int64_t offset, std::size_t bytes) {
    whole =
        whole && pread(from, buffer.data() + filled, bytes, offset) == static_cast<ssize_t>(bytes);
  };
  const auto flush = [&] {
    whole = whole && write(to, buffer.data(), filled) == static_cast<ssize_t>(filled);
    filled = 0;
  };
  for (const auto& [offset, bytes] : lists) fetch(offset, bytes);
  for (const auto& [offset, bytes] : images) {
    if (filled + bytes > buffer.size()) flush();
    fetch(offset, bytes);
    filled += bytes;
  }
  flush();
  close(from);
  if (close(to) == 0 && whole) return;
  std::perror("bare save");
  std::exit(1);
}
