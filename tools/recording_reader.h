#pragma once

#include <cstdint>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "tools/layout.h"
#include "tools/system.h"

namespace tools {

/// One image as a block's trailer lists it, with its bytes up to the tail, padding included. Places
/// count in bytes from the block's start.
struct StoredImage : Image {
  int index = 0;  ///< In its block, from 1 on.
  int begin = 0;
  int end = 0;
  std::string tailTitle;  ///< All that the tail has for a title, without zeros at the end.
  std::string trouble;    ///< Why the image cannot be read; empty when it can.
};

/// One block of a recording.
struct StoredBlock {
  int number = 0;                  ///< From 1 on.
  const Layout* layout = nullptr;  ///< Null when its type is none of its recording's kind.
  Bytes bytes{};                   ///< The block as it lies in the file.
  int trailer = 0;                 ///< Where in it the trailer begins.
  std::string trouble{};           ///< Why it cannot be read, or not wholly; empty when it can.
  int listedCount = 0;             ///< Image count as stored, however large.
  std::int64_t start = 0;          ///< Time stamps.
  std::int64_t end = 0;
  bool ntsc = false;
  std::vector<StoredImage> images{};
  int damagedImages = 0;  ///< Those that cannot be read.

  const std::uint8_t* At(int place) const { return bytes.data() + place; }
  /// The bytes between two places, the second not before the first.
  std::string Text(int from, int to) const {
    return {reinterpret_cast<const char*>(At(from)), static_cast<std::size_t>(to - from)};
  }
  const std::uint8_t* Trailer() const { return At(trailer); }
};

/// The title that readers take of a tail: at most 16 bytes, up to the first zero.
std::string ShownTitle(const std::string& tailTitle);

/// Takes a block apart of which the bytes and the trailer's place are set, by its own type byte.
void ParseBlock(StoredBlock& block, bool is20D);

/// A bar on standard error while files are read, where a person looks on.
class Progress {
 public:
  /// Takes the bar away.
  ~Progress();

  /// So many bytes more are going to be read.
  void Expect(std::int64_t bytes) { total_ += bytes; }
  /// So many of them have been.
  void Advance(std::int64_t bytes);

 private:
  std::int64_t total_ = 0;
  std::int64_t done_ = 0;
  int shown_ = 0;  ///< Percent.
};

/// What tells a file from others.
struct FileFacts {
  std::string path;
  std::int64_t size = 0;
  std::string sum{};  ///< SHA-256 in hexadecimal digits; empty when it was not asked for.
};

/// Reads recordings, whole or damaged, as the format tells and no other code. A last block that is
/// compact, its trailer right behind its data, is found by the trailer at the file's end.
class RecordingReader {
 public:
  /// Throws `std::runtime_error` when the file cannot be read or holds no whole block. What is read
  /// in the file's order for the first time is told to `progress`, if there is one.
  explicit RecordingReader(const std::string& path, Progress* progress = nullptr);

  bool Is20D() const { return form_.is20D; }
  int BlockCount() const { return blockCount_; }
  /// Bytes at the file's end that belong to no block.
  std::int64_t Rest() const { return rest_; }
  /// Reads a block, from 1 on; it stands until the next is read.
  const StoredBlock& Read(int number);
  /// The cameras that the blocks' masks name, from 1 on.
  std::set<int> MaskedCameras();
  /// To be asked once, in the end: for the sum what has not been read in the file's order is read.
  FileFacts Facts(bool withSum);

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
