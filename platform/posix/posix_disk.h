#pragma once

#include <map>
#include <memory>
#include <set>

#include "platform/file_names.h"
#include "platform/files.h"
#include "platform/flusher.h"

/// The disk of a POSIX system; paths are the system's own. Locks stand in for the sharing rules: a
/// file that is open for writing is nobody else's until it gets another name, and an open file is
/// neither deleted nor replaced. Where a file system knows no locks, there are no such rules.
class PosixDisk : public platform::Files, public platform::FileNames {
 public:
  platform::FileHandle Open(const std::string& path, platform::OpenMode mode) override;
  platform::TemporaryFile MakeTemporary(const std::string& folder,
                                        const std::string& prefix) override;
  bool Read(platform::FileHandle file, void* buffer, std::uint32_t bytes,
            std::uint32_t& bytesRead) override;
  bool Write(platform::FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override;
  bool Seek(platform::FileHandle file, std::int64_t position) override;
  std::optional<std::uint64_t> Size(platform::FileHandle file) override;
  std::future<platform::Flushed> Flush(platform::FileHandle file) override;
  bool Keep(platform::FileHandle file, const std::string& path) override;
  bool Rename(platform::FileHandle file, const std::string& from, const std::string& to,
              platform::IfTaken ifTaken) override;
  bool Close(platform::FileHandle file) override;
  std::optional<platform::FileIdentity> Identity(platform::FileHandle file) override;
  platform::Failure LastFailure() override { return lastFailure_; }

  platform::Standing LookAt(const std::string& path) override;
  bool Remove(const std::string& path) override;
  bool CopyTimes(const std::string& from, const std::string& to) override;
  bool InheritPermissions(const std::string& path) override;
  std::uint64_t FreeBytes(const std::string& folder) override;
  std::uint64_t LargestFile(const std::string& folder) override;
  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override;

 private:
  /// What is flushed with a file: the folders in which its names have changed.
  struct Flushing {
    platform::Flusher flusher;
    std::set<std::string> folders;
  };

  /// Takes down the system's last error unless a call has succeeded, and hands its answer on.
  bool Noted(bool done);
  /// The same for a file that is just open; closes it when it cannot be used.
  platform::FileHandle Locked(int file, int lock);

  std::map<platform::FileHandle, Flushing> flushing_;
  platform::Failure lastFailure_;
};
