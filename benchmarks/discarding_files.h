#pragma once

#include "platform/files.h"

/// Files of which everything but the writing is real: what is written is taken and forgotten. So a
/// copy can be measured that is larger than the disk.
class DiscardingFiles : public platform::Files {
 public:
  explicit DiscardingFiles(platform::Files& files) : files_(files) {}

  platform::FileHandle Open(const std::string& path, platform::OpenMode mode) override;
  bool Read(platform::FileHandle file, void* buffer, std::uint32_t bytes,
            std::uint32_t& bytesRead) override;
  bool Write(platform::FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override;
  bool Seek(platform::FileHandle file, std::int64_t position) override;
  std::optional<std::uint64_t> Size(platform::FileHandle file) override;
  bool Flush(platform::FileHandle file) override;
  bool Rename(platform::FileHandle file, const std::string& from, const std::string& to) override;
  bool Close(platform::FileHandle file) override;
  std::optional<platform::FileIdentity> Identity(platform::FileHandle file) override;

 private:
  platform::Files& files_;
};
