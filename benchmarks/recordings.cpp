#include "benchmarks/recordings.h"

#include <fstream>
#include <stdexcept>

#include "capture/fields.h"
#include "capture/format.h"
#include "tests/support/recordings.h"

namespace {

constexpr std::int32_t kTrailer = format::kVariant60D.trailerOffset;
constexpr std::int32_t kFirstSecond = 1'400'000'000;

/// No two blocks of a recording show the same time.
void SetStamps(std::string& block, std::int64_t number) {
  constexpr std::int64_t kSecondsOfBlock = 250;
  auto* trailer = reinterpret_cast<std::uint8_t*>(block.data()) + kTrailer;
  const std::int64_t start = kFirstSecond + number * kSecondsOfBlock;
  mdlFileProcessing::PutBigEndian(trailer + format::trailer::kStart, 4, start);
  mdlFileProcessing::PutBigEndian(trailer + format::trailer::kEnd, 4, start + kSecondsOfBlock - 1);
}

}  // namespace

std::string FullBlock(int images) {
  BlockPlan block;
  const int sectors = kTrailer / format::kSectorSize / images;
  for (int i = 0; i < images; ++i)
    block.images.push_back({.camera = i % 16,
                            .seconds = kFirstSecond + i,
                            .bytes = Picture(sectors * format::kSectorSize - 100, i),
                            .title = "Camera"});
  return Recording(format::kType30, {block});
}

void WriteRecording(const std::string& path, std::string block, std::int64_t blocks,
                    bool isSparse) {
  std::ofstream file(path, std::ios::binary);
  const std::size_t from = isSparse ? kTrailer : 0;
  for (std::int64_t i = 0; i < blocks; ++i) {
    SetStamps(block, i);
    file.seekp(i * format::kBlockSize + static_cast<std::int64_t>(from));
    file.write(block.data() + from, static_cast<std::streamsize>(block.size() - from));
  }
  if (!file.flush()) throw std::runtime_error("cannot write " + path);
}
