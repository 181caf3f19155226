#pragma once

#include "platform/file_names.h"
#include "platform/files.h"

/// The real disk of a POSIX system, for native tests, benchmarks and tools; paths are the
/// system's own. Locks stand in for the sharing rules: a file that is open for writing is nobody
/// else's, and an open file is not deleted.
class PosixDisk : public platform::Files, public platform::FileNames {
 public:
  platform::FileHandle Open(const std::string& path, platform::OpenMode mode) override;
  bool Read(platform::FileHandle file, void* buffer, std::uint32_t bytes,
            std::uint32_t& bytesRead) override;
  bool Write(platform::FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override;
  bool Seek(platform::FileHandle file, std::int64_t position) override;
  std::optional<std::uint64_t> Size(platform::FileHandle file) override;
  std::future<bool> Flush(platform::FileHandle file) override;
  bool Rename(platform::FileHandle file, const std::string& from, const std::string& to) override;
  bool Close(platform::FileHandle file) override;
  std::optional<platform::FileIdentity> Identity(platform::FileHandle file) override;

  bool Find(const std::string& path) override;
  bool Remove(const std::string& path) override;
  std::string MakeTemporary(const std::string& folder, const std::string& prefix) override;
  bool SetTemporary(const std::string& path, bool temporary) override;
  bool CopyTimes(const std::string& from, const std::string& to) override;
  std::uint64_t FreeBytes(const std::string& root) override;
  std::uint64_t LargestFile(const std::string& folder) override;
  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override;
  bool InheritPermissions(const std::string& path) override;
};
