#include "benchmarks/recordings.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "tests/support/recording_builder.h"

namespace {

constexpr std::int32_t kTrailer = format::kVariant60D.trailerOffset;
constexpr std::int64_t kFirstSecond = 1'400'000'000;
constexpr std::int64_t kSecondsOfBlock = 250;

class NewFile {
 public:
  explicit NewFile(const std::string& path)
      : file_(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644)) {}
  ~NewFile() { close(file_); }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void Put(std::int64_t offset, const std::string& bytes) const {
    if (pwrite(file_, bytes.data(), bytes.size(), offset) == std::ssize(bytes)) return;
    std::perror("writing a recording");
    std::exit(1);
  }

 private:
  int file_;
};

/// A block's trailer with stamps of its own: no two blocks of a recording show the same time.
std::string TrailerOf(const std::string& block, std::int64_t number) {
  std::string trailer = block.substr(kTrailer);
  auto* bytes = reinterpret_cast<std::uint8_t*>(trailer.data());
  const std::int64_t start = kFirstSecond + number * kSecondsOfBlock;
  mdlFileProcessing::PutBigEndian(bytes + format::trailer::kStart, 4, start);
  mdlFileProcessing::PutBigEndian(bytes + format::trailer::kEnd, 4, start + kSecondsOfBlock - 1);
  return trailer;
}

}  // namespace

std::string FullBlock(int imagesPerBlock) {
  RecordingBuilder builder(format::kType30);
  builder.Block();
  const int sectors = kTrailer / format::kSectorSize / imagesPerBlock;
  for (int i = 0; i < imagesPerBlock; ++i)
    builder.Image({.camera = i % 16,
                   .seconds = static_cast<std::int32_t>(kFirstSecond) + i,
                   .bytes = Picture(sectors * format::kSectorSize - 100, i),
                   .title = "Camera"});
  return builder.Bytes();
}

void WriteRecording(const std::string& path, const std::string& block, std::int64_t blocks) {
  const NewFile file(path);
  for (std::int64_t i = 0; i < blocks; ++i) {
    file.Put(i * format::kBlockSize, block.substr(0, kTrailer));
    file.Put(i * format::kBlockSize + kTrailer, TrailerOf(block, i));
  }
}

void WriteSparseRecording(const std::string& path, const std::string& block, std::int64_t blocks) {
  const NewFile file(path);
  for (std::int64_t i = 0; i < blocks; ++i)
    file.Put(i * format::kBlockSize + kTrailer, TrailerOf(block, i));
}
