#pragma once

#include <cstdint>
#include <future>
#include <optional>
#include <string>

namespace platform {

/// An open file. Every handle is closed by the routine that opened it.
enum class FileHandle : std::intptr_t { kInvalid = -1 };

/// How a file is opened.
enum class OpenMode {
  kReadExisting,  ///< Read; others may read and write it meanwhile.
  /// Write, rename and delete a file that is there. Others may have it open only so that it can go
  /// under their hands, which `kReadExisting` does not allow.
  kWriteExisting,
  kWriteNew,  ///< Write a new file, or an old one cut to nothing; nobody else has access.
};

/// What tells one file from another whatever names lead to it.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t file = 0;
  bool operator==(const FileIdentity&) const = default;
};

/// Reading and writing of open files. Paths are UTF-8.
class Files {
 public:
  virtual ~Files() = default;

  /// Opens a file; `FileHandle::kInvalid` when that fails.
  virtual FileHandle Open(const std::string& path, OpenMode mode) = 0;
  /// Reads up to `bytes` bytes at the file's position. False when the read itself fails; a read
  /// past the end succeeds with fewer bytes. `bytesRead` is always set.
  virtual bool Read(FileHandle file, void* buffer, std::uint32_t bytes,
                    std::uint32_t& bytesRead) = 0;
  /// Writes `bytes` bytes at the file's position. A full disk may show as success with fewer bytes.
  virtual bool Write(FileHandle file, const void* buffer, std::uint32_t bytes,
                     std::uint32_t& bytesWritten) = 0;
  /// Moves the file's position to `position` bytes from its start.
  virtual bool Seek(FileHandle file, std::int64_t position) = 0;
  /// The file's size in bytes; none when it cannot be told.
  virtual std::optional<std::uint64_t> Size(FileHandle file) = 0;
  /// Hands everything written so far to the disk, beside what else is done. The answer, to be
  /// awaited before the file is closed, is false when that fails.
  virtual std::future<bool> Flush(FileHandle file) = 0;
  /// Gives a file that is open with `kWriteExisting` under the name `from` the name `to` on the
  /// same volume. Fails when `to` exists.
  virtual bool Rename(FileHandle file, const std::string& from, const std::string& to) = 0;
  /// Closes the file. False when what was written could not be kept.
  virtual bool Close(FileHandle file) = 0;
  /// The file's identity; none for what is no disk file (a device).
  virtual std::optional<FileIdentity> Identity(FileHandle file) = 0;
};

}  // namespace platform
