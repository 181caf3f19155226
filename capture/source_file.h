#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/files.h"

namespace mdlFileProcessing {

/// Size of an open file in bytes; 0 when its low 32 bits are all ones.
double FileSize64(platform::Files& files, platform::FileHandle file);

/// Number of blocks in a file of `size` bytes: rounded to the nearest, halves to even; at most
/// 2^31 - 1.
std::int32_t BlocksInFile(double size);

}  // namespace mdlFileProcessing

/// A capture file that is being read: open while this object lives.
class SourceFile {
 public:
  SourceFile(platform::Files& files, const std::string& path);
  ~SourceFile();
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  bool IsOpen() const { return hSourceFile != platform::FileHandle::kInvalid; }
  /// Bytes, as `FileSize64` tells them.
  double Size() const { return mdlFileProcessing::FileSize64(files_, hSourceFile); }
  /// What tells this file from another; none when it cannot be told.
  std::optional<platform::FileIdentity> Identity() const { return files_.Identity(hSourceFile); }

  /// Fills `bytes` from block `block` (from 1), `offset` bytes from its start on. Answers how many
  /// were read, which are fewer where the file ends; none when the read itself fails.
  std::optional<std::int32_t> Read(std::int32_t block, std::int32_t offset,
                                   std::span<std::uint8_t> bytes);

 private:
  bool SeekBlock(std::int32_t block, std::int32_t offset);

  platform::Files& files_;
  platform::FileHandle hSourceFile;
};
