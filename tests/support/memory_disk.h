#pragma once

#include <strings.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/files.h"
#include "tests/support/fault.h"

/// A whole disk in memory, for tests and fuzzers: drives, folders and files by Windows paths,
/// compared without regard to case. A new file is nobody else's while it is open, what is open for
/// renaming cannot be read and the other way round, and an open file cannot be deleted. A fault
/// strikes the calls of the three interfaces. A flush or close that fails loses half of what was
/// written since the last flush, and a close that fails has closed the file all the same.
class MemoryDisk : public platform::Files, public platform::FileNames, public platform::Drives {
 public:
  using OpenMode = platform::OpenMode;

  struct File {
    std::string bytes;
    bool hidden = false;  ///< `Find` does not answer it.
    bool temporary = false;
    long long written = 0;    ///< When: the number of the last write, unless a test says otherwise.
    std::string permissions;  ///< The folder that has handed them down.
    std::string volume;
    int handles = 0;
    OpenMode mode = OpenMode::kReadExisting;  ///< Of the handles that are open.
    std::uint64_t unflushed = 0;              ///< Bytes at the end.

    bool IsWritten() const { return mode != OpenMode::kReadExisting; }
  };
  struct CaseBlind {
    bool operator()(const std::string& left, const std::string& right) const {
      return strcasecmp(left.c_str(), right.c_str()) < 0;
    }
  };
  using Limits = std::map<std::string, std::uint64_t, CaseBlind>;

  /// Strikes nothing unless a test sets it.
  Fault fault;
  /// Drives of type CD-ROM ("E:").
  std::vector<std::string> cdRoms;
  /// Bytes that a volume ("C:") says it has free, unlimited where none are given. A write on a full
  /// one is a short transfer, as a fault makes them.
  Limits room;
  /// The most bytes that a file on a volume can have, unlimited where none are given.
  Limits largest;
  /// Folders that are, with what lies below them, a volume of their own ("F:").
  std::map<std::string, std::string, CaseBlind> mounts;
  /// Folders in which no new file can be made.
  std::set<std::string, CaseBlind> protectedFolders;
  /// So many of the next calls of `Rename` fail, and their files stay as they are.
  int refusedRenames = 0;
  /// Bytes read and calls of `Read` so far.
  std::uint64_t totalRead = 0;
  int reads = 0;

  /// Puts a file there, its folders included.
  void Put(const std::string& path, std::string bytes) { NewFile(path) = std::move(bytes); }
  /// Gives a file another name, as a hard link does.
  void Link(const std::string& from, const std::string& to) { files_[to] = At(from); }
  /// The file of this path; null when there is none.
  std::shared_ptr<File> At(const std::string& path) const;
  /// The bytes of a file that is there, for as long as it stays as it is.
  std::string_view View(const std::string& path) const { return At(path)->bytes; }
  /// The bytes of a file; none when there is no such file.
  std::optional<std::string> Bytes(const std::string& path) const {
    return At(path) ? std::optional(At(path)->bytes) : std::nullopt;
  }
  /// Takes a file away and answers its bytes; nothing when there is no such file.
  std::string Take(const std::string& path);
  /// Paths of all files.
  std::vector<std::string> Paths() const;
  /// What a loss of power does: what was written since the last flush is gone.
  void LoseUnflushed();
  /// Number of handles that are open.
  std::size_t OpenHandles() const { return handles_.size(); }

  platform::FileHandle Open(const std::string& path, OpenMode mode) override;
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

  bool Find(const std::string& path) override {
    return !Fails("find") && At(path) && !At(path)->hidden;
  }
  bool Remove(const std::string& path) override { return !Fails("remove") && Delete(path); }
  std::string MakeTemporary(const std::string& folder, const std::string& prefix) override;
  bool SetTemporary(const std::string& path, bool temporary) override;
  bool CopyTimes(const std::string& from, const std::string& to) override;
  std::uint64_t FreeBytes(const std::string& root) override {
    return Fails("free bytes") ? 0 : LimitOf(room, VolumeOf(root));
  }
  std::uint64_t LargestFile(const std::string& folder) override {
    return LimitOf(largest, VolumeOf(folder));
  }
  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override;
  bool InheritPermissions(const std::string& path) override;

  std::vector<std::string> CdRomDrives() override { return cdRoms; }
  bool HasFile(const std::string& path) override { return !Fails("has file") && At(path); }
  bool HasFolder(const std::string& path) override {
    return !Fails("has folder") && !path.empty() && IsFolder(path);
  }
  std::optional<std::uint64_t> FileBytes(const std::string& path) override;
  bool MakeFolder(const std::string& path) override;
  bool RemoveFolder(const std::string& path) override;
  bool RemoveFilesIn(const std::string& folder) override;
  std::vector<std::string> FilesBelow(const std::string& folder) override;

 private:
  struct Handle {
    std::shared_ptr<File> file;
    std::uint64_t position = 0;
  };

  static std::uint64_t LimitOf(const Limits& limits, const std::string& volume) {
    return limits.contains(volume) ? limits.at(volume) : UINT64_MAX;
  }
  bool Fails(const char* operation) { return fault.Strikes(operation); }
  /// How many of the bytes a read or write moves.
  std::uint32_t Moved(const char* operation, std::uint32_t bytes) {
    return fault.Strikes(operation, Fault::Kind::kShortTransfer) ? bytes / 2 : bytes;
  }
  bool IsFolder(const std::string& path) const;
  bool TakesNewFiles(const std::string& folder) const {
    return IsFolder(folder) && !protectedFolders.contains(folder);
  }
  bool Delete(const std::string& path);
  /// Makes an empty file, its folders included, and answers its bytes.
  std::string& NewFile(const std::string& path);
  Handle* Of(platform::FileHandle file);
  /// Whether a flush or close keeps what was written; else half of it is gone.
  bool Keeps(const char* operation, File& file);
  /// The volume of a path: that of its drive or of the folder, mounted, in which it lies.
  std::string VolumeOf(const std::string& path) const;
  /// Whether a file or folder can be made there: its folder exists, and the name is free.
  bool HasRoomFor(const std::string& path) const;
  bool Exists(const std::string& path) const { return At(path) || IsFolder(path); }

  std::map<std::string, std::shared_ptr<File>, CaseBlind> files_;
  std::set<std::string, CaseBlind> folders_;
  std::map<std::intptr_t, Handle> handles_;
  std::intptr_t nextHandle_ = 0;  // A handle of 0 is as good as any other.
  int temporaryNames_ = 0;
  long long time_ = 0;
};
