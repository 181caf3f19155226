#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "tools/bytes.h"
#include "tools/layout.h"
#include "tools/progress.h"
#include "tools/system.h"

namespace tools {

/// One image as a block's trailer lists it. Places count in bytes from the block's start.
struct StoredImage {
  int index = 0;   ///< In its block, from 1 on.
  int camera = 0;  ///< From 0 on.
  int flags = 0;   ///< 0 to 3.
  bool hasTail = false;
  std::int64_t seconds = 0;  ///< From the tail, else from the entry, else spread over the block.
  std::string title;         ///< From the tail, as readers take it; not trimmed.
  std::string text;
  int textSectors = 0;
  int begin = 0;       ///< The image's bytes,
  int bytesEnd = 0;    ///< which end before the tail, padding included.
  int soundBegin = 0;  ///< Its sound, which reaches to `end`.
  int end = 0;
  std::string trouble;  ///< Why the image cannot be read; empty when it can.
};

/// One block of a recording.
struct StoredBlock {
  int number = 0;        ///< From 1 on.
  bool isKnown = false;  ///< Whether its type is one of its recording's kind.
  const Layout* layout = nullptr;
  bool compact = false;    ///< Shorter than 2 MiB, its trailer right behind its data.
  Bytes bytes;             ///< The block as it lies in the file.
  int trailer = 0;         ///< Where in it the trailer begins.
  std::string trouble;     ///< Why it cannot be read, or not wholly; empty when it can.
  int listedCount = 0;     ///< Image count as stored, however large.
  std::int64_t start = 0;  ///< Time stamps.
  std::int64_t end = 0;
  bool ntsc = false;
  std::vector<std::string> titles;  ///< The title table, where there is one.
  std::vector<StoredImage> images;
  int damagedImages = 0;  ///< Those that cannot be read.

  const std::uint8_t* Trailer() const { return bytes.data() + trailer; }
  const std::uint8_t* At(int place) const { return bytes.data() + place; }
};

/// The title that an image shows: its own, else its camera's in the block's table; without blanks
/// around it.
std::string TitleOf(const StoredBlock& block, const StoredImage& image);

/// Takes a block apart of which the bytes and the trailer's place are set, by its own type byte.
void ParseBlock(StoredBlock& block, bool is20D);

/// Reads recordings, whole or damaged, as the format tells and no other code. A last block that is
/// compact is found by the trailer at the file's end.
class RecordingReader {
 public:
  /// Throws `std::runtime_error` when the file cannot be read or holds no whole block. What is read
  /// in the file's order for the first time is told to `progress`, if there is one.
  explicit RecordingReader(const std::string& path, Progress* progress = nullptr);

  std::int64_t Size() const { return size_; }
  bool Is20D() const { return form_.is20D; }
  int BlockCount() const { return blockCount_; }
  /// Bytes at the file's end that belong to no block.
  std::int64_t Rest() const { return rest_; }
  /// Reads a block, from 1 on; it stands until the next is read.
  const StoredBlock& Read(int number);
  /// The cameras that the blocks' masks name, from 1 on.
  std::vector<int> MaskedCameras();
  /// The SHA-256 of the whole file in hexadecimal digits; to be asked once. Reads only what has not
  /// been read in the file's order.
  std::string Sum();

 private:
  /// Where a block's trailer lies in it.
  int TrailerOf(int number) const;
  void ReadBytes(std::int64_t position, std::int64_t count, Bytes& bytes);
  bool EndsInTrailer();

  std::string path_;
  std::ifstream file_;
  Progress* progress_;
  Sha256 sum_;
  std::int64_t summed_ = 0;  ///< Bytes in the sum.
  std::int64_t size_ = 0;
  const Layout& form_;  ///< Of the blocks that are written today.
  int blockCount_ = 0;
  std::int64_t compact_ = 0;  ///< Length of a compact last block; 0 when there is none.
  std::int64_t rest_ = 0;
  StoredBlock block_;
};

/// Whether a path names a .20D file; every other one names a .60D file.
bool IsNameOf20D(const std::string& path);

}  // namespace tools
