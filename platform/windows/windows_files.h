#pragma once

#include "platform/files.h"

namespace platform {

/// Open files of Windows.
class WindowsFiles : public Files {
 public:
  FileHandle Open(const std::string& path, OpenMode mode) override;
  bool Read(FileHandle file, void* buffer, std::uint32_t bytes, std::uint32_t& bytesRead) override;
  bool Write(FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override;
  bool Seek(FileHandle file, std::int64_t position) override;
  std::optional<std::uint64_t> Size(FileHandle file) override;
  std::future<bool> Flush(FileHandle file) override;
  bool Rename(FileHandle file, const std::string& from, const std::string& to) override;
  bool Close(FileHandle file) override;
  std::optional<FileIdentity> Identity(FileHandle file) override;
};

}  // namespace platform
