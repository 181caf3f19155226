#pragma once

#include <map>
#include <memory>

#include "platform/files.h"
#include "platform/flusher.h"
#include "platform/windows/win32.h"

namespace platform {

/// Open files of Windows.
class WindowsFiles : public Files {
 public:
  FileHandle Open(const std::string& path, OpenMode mode) override;
  TemporaryFile MakeTemporary(const std::string& folder, const std::string& prefix) override;
  bool Read(FileHandle file, void* buffer, std::uint32_t bytes, std::uint32_t& bytesRead) override;
  bool Write(FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override;
  bool Seek(FileHandle file, std::int64_t position) override;
  std::optional<std::uint64_t> Size(FileHandle file) override;
  std::future<Flushed> Flush(FileHandle file) override;
  bool Keep(FileHandle file, const std::string& path) override;
  bool Rename(FileHandle file, const std::string& from, const std::string& to,
              IfTaken ifTaken) override;
  bool Close(FileHandle file) override;
  std::optional<FileIdentity> Identity(FileHandle file) override;
  Failure LastFailure() override { return lastFailure_; }

 private:
  /// What flushes a file, and the handle by which it does so.
  class Flushing;

  /// Takes down the system's last error unless a call has succeeded, and hands its answer on.
  bool Noted(BOOL done);

  std::map<FileHandle, std::shared_ptr<Flushing>> flushing_;
  Failure lastFailure_;
};

}  // namespace platform
