#pragma once

#include <chrono>
#include <cstdint>
#include <future>
#include <optional>
#include <string>

#include "platform/failure.h"

namespace platform {

/// An open file. Every handle is closed by the routine that opened it.
enum class FileHandle : std::intptr_t { kInvalid = -1 };

/// How a file is opened.
enum class OpenMode {
  kReadExisting,  ///< Read; others may read and write it meanwhile, but not delete it.
  kWriteNew,      ///< Write a new file, or an old one cut to nothing; nobody else has access.
};

/// A new file with a name of its own.
struct TemporaryFile {
  FileHandle file = FileHandle::kInvalid;
  std::string path;  ///< Where it lies, or will once it is kept.
};

/// What becomes of a file that has a wanted name already.
enum class IfTaken {
  kReplace,  ///< It goes, in the same step in which the other gets its name.
  kRefuse,
};

/// What a flush answers.
struct Flushed {
  bool done = false;
  Failure why = {};  ///< Unless it is done.
  std::chrono::steady_clock::duration took{};
};

/// What tells one file from another whatever names lead to it; of no other use.
struct FileIdentity {
  std::string id;
  bool operator==(const FileIdentity&) const = default;
};

/// Reading and writing of open files. Paths are UTF-8.
class Files {
 public:
  virtual ~Files() = default;

  /// Opens a file; `FileHandle::kInvalid` when that fails.
  virtual FileHandle Open(const std::string& path, OpenMode mode) = 0;
  /// Makes an empty file of a new unique name, the given prefix and the ending ".tmp", in `folder`,
  /// open for writing and to get another name. Others may have it open only so that it can go under
  /// their hands. It goes when it is closed, and when the program ends however that comes, until it
  /// is kept; where the file system knows no such thing, it stays.
  virtual TemporaryFile MakeTemporary(const std::string& folder, const std::string& prefix) = 0;
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
  /// Hands everything written so far to the disk, and the name that the file has got, beside what
  /// else is done. The answer is to be awaited before the next flush and before the file is closed.
  virtual std::future<Flushed> Flush(FileHandle file) = 0;
  /// Makes a temporary file, which lies at `path`, a lasting one.
  virtual bool Keep(FileHandle file, const std::string& path) = 0;
  /// Gives a kept file that has the name `from` the name `to` on the same volume. What has it is
  /// replaced itself where it is a link. Folders, and files that are protected or that others have
  /// open without letting them go, are never replaced; the file itself may be from then on.
  virtual bool Rename(FileHandle file, const std::string& from, const std::string& to,
                      IfTaken ifTaken) = 0;
  /// Closes the file. False when what was written could not be kept.
  virtual bool Close(FileHandle file) = 0;
  /// The file's identity; none for what is no disk file (a device).
  virtual std::optional<FileIdentity> Identity(FileHandle file) = 0;
  /// Why the calling thread's last call that has failed did so; a flush tells by itself.
  virtual Failure LastFailure() = 0;
};

}  // namespace platform
