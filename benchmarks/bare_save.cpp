#include "benchmarks/bare_save.h"

#include <cstdio>
#include <cstdlib>

#include "capture/format.h"
#include "save/camera_index.h"

namespace {

void Demand(bool done) {
  if (done) return;
  std::fprintf(stderr, "the bare save failed\n");
  std::exit(1);
}

}  // namespace

BareSave::BareSave(const CameraIndex& index, std::int32_t cameras) {
  constexpr std::int64_t kTrailer = format::kVariant60D.trailerOffset;
  for (std::int32_t b = 1; b <= index.blocks.UpperBound(); ++b) {
    const std::int64_t block = (b - 1) * std::int64_t{format::kBlockSize};
    const auto& indexed = index.blocks[b].images;
    const auto entries = static_cast<std::uint32_t>(indexed.size()) * format::entry30::kSize;
    lists_.emplace_back(block + kTrailer + format::trailer30::kImageCount, 3);
    lists_.emplace_back(block + kTrailer + format::trailer30::kEntryList,
                        entries + format::kEndEntryLength);
    for (const IndexedImage& image : indexed) {
      if ((cameras >> image.camera & 1) == 0) continue;
      const std::int64_t sector = image.startSector - format::kVariant60D.trailerSectors;
      const auto sectors = static_cast<std::uint32_t>(image.endSector - image.startSector);
      AddImage(block + sector * format::kSectorSize, sectors * format::kSectorSize);
    }
  }
}

void BareSave::AddImage(std::int64_t offset, std::uint32_t bytes) {
  const bool follows = !images_.empty() && images_.back().first + images_.back().second == offset;
  if (follows) {
    images_.back().second += bytes;
  } else {
    images_.emplace_back(offset, bytes);
  }
}

void BareSave::Run(platform::Files& files, const std::string& source,
                   const std::string& target) const {
  const auto from = files.Open(source, platform::OpenMode::kReadExisting);
  const auto to = files.Open(target, platform::OpenMode::kWriteNew);
  std::vector<char> buffer(format::kBlockSize);
  std::uint32_t filled = 0;
  const auto fetch = [&](std::int64_t offset, std::uint32_t bytes) {
    std::uint32_t read = 0;
    Demand(files.Seek(from, offset) && files.Read(from, &buffer[filled], bytes, read) &&
           read == bytes);
  };
  const auto flush = [&] {
    std::uint32_t written = 0;
    Demand(files.Write(to, buffer.data(), filled, written) && written == filled);
    filled = 0;
  };
  for (const auto& [offset, bytes] : lists_) fetch(offset, bytes);
  for (const auto& [offset, bytes] : images_) {
    if (filled + bytes > buffer.size()) flush();
    fetch(offset, bytes);
    filled += bytes;
  }
  flush();
  files.Close(from);
  Demand(files.Close(to));
}
