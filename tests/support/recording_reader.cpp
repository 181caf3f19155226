#include "tests/support/recording_reader.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr std::size_t kBlock = 2097152;
constexpr std::size_t kSector = 512;

std::uint32_t Number(std::string_view bytes, std::size_t offset, std::size_t width) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < width; ++i)
    value = value << 8 | static_cast<unsigned char>(bytes.at(offset + i));
  return value;
}

std::string Part(std::string_view bytes, std::size_t begin, std::size_t end) {
  if (begin > end || end > bytes.size()) throw std::out_of_range("extent");
  return std::string(bytes.substr(begin, end - begin));
}

void Demand(bool holds, const char* what) {
  if (!holds) throw std::out_of_range(what);
}

/// The image between two sectors, counted from the block's first.
TestImage ReadImage(std::string_view block, std::uint32_t entry, std::size_t first,
                    std::size_t end) {
  TestImage image;
  image.camera = static_cast<int>(entry & 0xFF);
  image.flags = static_cast<int>(entry >> 28);
  const std::size_t soundSectors = entry >> 11 & 31;
  const std::size_t textSectors = entry >> 8 & 3;
  const std::size_t sound = (end - soundSectors) * kSector;
  const std::size_t text = sound - textSectors * kSector;
  const std::size_t tail = text - 56;
  image.sound = Part(block, sound, end * kSector);
  if (textSectors > 0) {
    Demand(Number(block, text, 4) == 0x20000802, "text marker");
    image.text = Part(block, text + 12, text + 12 + Number(block, text + 4, 4));
  }
  Demand(Number(block, tail, 4) == 0x38010000, "tail");
  image.seconds = static_cast<std::int32_t>(Number(block, tail + 4, 4));
  image.title = Part(block, tail + 8, tail + 56);
  image.title.erase(image.title.find_last_not_of('\0') + 1);
  image.bytes = Part(block, first * kSector, tail);
  return image;
}

StoredBlock ReadBlock(std::string_view block, std::size_t trailerOffset, bool is20D) {
  const std::size_t bias = is20D ? 6 : 2;
  StoredBlock stored;
  stored.trailer = block.substr(trailerOffset);
  Demand(stored.Field(13, 1) == (is20D ? 0x60u : 0x30u), "block type");
  const std::size_t count = stored.Field(32, 2);
  for (std::size_t i = 0; i <= count; ++i) {
    const std::uint32_t entry = stored.Field(36 + 4 * i, 4);
    // The end of a full block has one bit more than the twelve of the others.
    const std::size_t sector = (i < count ? entry >> 16 & 0xFFF : entry >> 16) - bias;
    Demand(sector * kSector <= trailerOffset, "sector");
    stored.dataBytes = sector * kSector;
    if (i == count) break;
    std::size_t end = stored.Field(36 + 4 * (i + 1), 2);
    end = (i + 1 < count ? end & 0xFFF : end) - bias;
    stored.images.push_back(ReadImage(block, entry, sector, end));
  }
  return stored;
}

}  // namespace

std::uint32_t StoredBlock::Field(std::size_t offset, std::size_t width) const {
  return Number(trailer, offset, width);
}

std::vector<StoredBlock> ReadRecording(std::string_view recording, bool is20D) {
  const std::size_t trailerLength = is20D ? 3072 : 1024;
  std::vector<StoredBlock> blocks;
  for (std::size_t start = 0; start < recording.size(); start += kBlock) {
    const std::string_view block = recording.substr(start, kBlock);
    Demand(block.size() >= trailerLength, "trailer");
    blocks.push_back(ReadBlock(block, block.size() - trailerLength, is20D));
  }
  return blocks;
}

std::vector<TestImage> ImagesOf(std::string_view recording, bool is20D) {
  std::vector<TestImage> images;
  for (const StoredBlock& block : ReadRecording(recording, is20D))
    for (TestImage image : block.images) {
      image.bytes.erase(image.bytes.find_last_not_of('\0') + 1);
      images.push_back(std::move(image));
    }
  return images;
}
