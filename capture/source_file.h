#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "capture/format.h"
#include "platform/files.h"

namespace mdlFileProcessing {

/// Size of an open file in bytes; 0 when its low 32 bits are all ones, none when it cannot be told.
std::optional<double> FileSize64(platform::Files& files, platform::FileHandle file);

/// Number of blocks in a file of `size` bytes: rounded to the nearest, halves to even; at most
/// 2^31 - 1.
std::int32_t BlocksInFile(double size);

}  // namespace mdlFileProcessing

/// A capture file that is being read: open while this object lives. Its blocks, numbered from 1,
/// have 2 MiB each; the last of a rebuilt file is short, its trailer right behind its data. What
/// kind of file it is tells `mdlFileProcessing::bln20D`.
class SourceFile {
 public:
  SourceFile(platform::Files& files, const std::string& path);
  ~SourceFile();
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  /// Why it is not open, or a read has failed, as far as the system has told it.
  const platform::Failure& Reason() const { return reason_; }
  /// False when the file, or what tells where it ends, cannot be read.
  bool IsOpen() const { return hSourceFile != platform::FileHandle::kInvalid; }
  /// What tells this file from another; none when it cannot be told.
  std::optional<platform::FileIdentity> Identity() const { return files_.Identity(hSourceFile); }

  /// Whether its size is that of a recording: two whole blocks or more, or any with a short one.
  bool IsRecording() const { return isRecording_; }
  /// Blocks: as `BlocksInFile` counts them where the file does not end in a short one. 0 for more
  /// than `mdlFileProcessing::kMostBlocks`.
  std::int32_t BlockCount() const { return blockCount_; }
  /// Bytes of a block.
  std::int32_t LengthOf(std::int32_t block) const {
    return shortLength_ > 0 && block == blockCount_ ? shortLength_ : format::kBlockSize;
  }
  /// Where the trailer of a block is, in bytes from its start.
  std::int32_t TrailerOf(std::int32_t block) const {
    return LengthOf(block) - variant_.trailerLength;
  }

  /// Fills `bytes` from a block, `offset` bytes from its start on. Answers how many were read,
  /// which are fewer where the file ends; none when the read itself fails.
  std::optional<std::int32_t> Read(std::int32_t block, std::int32_t offset,
                                   std::span<std::uint8_t> bytes);
  /// The same, `offset` bytes from the start of its trailer on.
  std::optional<std::int32_t> ReadTrailer(std::int32_t block, std::int32_t offset,
                                          std::span<std::uint8_t> bytes);

 private:
  bool SeekBlock(std::int32_t block, std::int32_t offset);
  bool Measure();
  void Close();

  platform::Files& files_;
  const format::Variant& variant_;
  platform::FileHandle hSourceFile;
  std::int32_t blockCount_ = 0;
  std::int32_t shortLength_ = 0;  // Of the last block, in bytes; 0 when that is none.
  bool isRecording_ = false;
  platform::Failure reason_;
};
