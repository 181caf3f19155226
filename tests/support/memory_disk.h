#pragma once

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
  /// Strikes nothing unless a test sets it.
  Fault fault;

  /// Puts a file there, its folders included.
  void Put(const std::string& path, std::string bytes) { NewFile(path) = std::move(bytes); }
  /// Gives a file another name, as a hard link does.
  void Link(const std::string& from, const std::string& to);
  /// The bytes of a file; none when there is no such file.
  std::optional<std::string> Bytes(const std::string& path) const;
  /// The same without a copy, for as long as the file stays as it is.
  std::string_view View(const std::string& path) const { return At(path)->bytes; }
  /// Takes a file away and answers its bytes; nothing when there is no such file.
  std::string Take(const std::string& path);
  /// Paths of all files.
  std::vector<std::string> Paths() const;
  /// Bytes that a volume ("C:") says it has free; unlimited at first. A write on a full one is a
  /// short transfer, as a fault makes them.
  void SetRoom(const std::string& volume, std::uint64_t bytes) { room_[volume] = bytes; }
  /// Makes a folder, and what lies below it, a volume of its own ("F:"), as a mounted one is.
  void Mount(const std::string& folder, const std::string& volume) { mounts_[folder] = volume; }
  /// The most bytes that a file on a volume ("C:") can have; unlimited at first.
  void SetLargestFile(const std::string& volume, std::uint64_t bytes) { largest_[volume] = bytes; }
  /// Lets no new file be made in a folder.
  void Protect(const std::string& folder) { protected_.insert(folder); }
  /// Lets the next calls of `Rename` fail, and their files stay as they are.
  void RefuseRenames(int times = kForGood) { refusedRenames_ = times; }
  static constexpr int kForGood = -1;
  /// Whether a file has the permissions that its folder hands down.
  bool HasFoldersPermissions(const std::string& path) const;
  /// Adds a drive of type CD-ROM ("E:").
  void AddCdRom(const std::string& drive) { cdRoms_.push_back(drive); }
  /// Makes a file hidden, which `Find` does not answer.
  void Hide(const std::string& path) { At(path)->hidden = true; }
  bool IsTemporary(const std::string& path) const { return At(path)->temporary; }
  /// What a loss of power does: what was written since the last flush is gone.
  void LoseUnflushed();
  /// When a file was last written: the number of that write, unless a test says otherwise.
  long long Written(const std::string& path) const { return At(path)->written; }
  void SetWritten(const std::string& path, long long when) { At(path)->written = when; }
  /// Number of handles that are open.
  std::size_t OpenHandles() const { return handles_.size(); }
  /// Bytes read and calls of `Read` so far.
  std::uint64_t BytesRead() const { return bytesRead_; }
  int Reads() const { return reads_; }

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

  bool Find(const std::string& path) override;
  bool Remove(const std::string& path) override;
  std::string MakeTemporary(const std::string& folder, const std::string& prefix) override;
  bool SetTemporary(const std::string& path, bool temporary) override;
  bool CopyTimes(const std::string& from, const std::string& to) override;
  std::uint64_t FreeBytes(const std::string& root) override;
  std::uint64_t LargestFile(const std::string& folder) override;
  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override;
  bool InheritPermissions(const std::string& path) override;

  std::vector<std::string> CdRomDrives() override { return cdRoms_; }
  bool HasFile(const std::string& path) override;
  bool HasFolder(const std::string& path) override;
  std::optional<std::uint64_t> FileBytes(const std::string& path) override;
  bool MakeFolder(const std::string& path) override;
  bool RemoveFolder(const std::string& path) override;
  bool RemoveFilesIn(const std::string& folder) override;
  std::vector<std::string> FilesBelow(const std::string& folder) override;

 private:
  using OpenMode = platform::OpenMode;

  struct File {
    std::string bytes;
    bool hidden = false;
    bool temporary = false;
    long long written = 0;
    int handles = 0;
    OpenMode mode = OpenMode::kReadExisting;  ///< Of the handles that are open.
    std::uint64_t unflushed = 0;              ///< Bytes at the end.
    std::string permissions;                  ///< The folder that has handed them down.
  };
  struct Handle {
    std::shared_ptr<File> file;
    std::string volume;
    OpenMode mode;
    std::uint64_t position = 0;

    bool Writes() const { return mode != OpenMode::kReadExisting; }
  };
  struct CaseBlind {
    bool operator()(const std::string& left, const std::string& right) const;
  };

  static bool IsSamePath(const std::string& left, const std::string& right);
  bool Fails(const char* operation) { return fault.Strikes(operation); }
  /// How many of the bytes a read or write moves.
  std::uint32_t Moved(const char* operation, std::uint32_t bytes) {
    return fault.Strikes(operation, Fault::Kind::kShortTransfer) ? bytes / 2 : bytes;
  }
  bool IsFolder(const std::string& path) const;
  bool TakesNewFiles(const std::string& folder) const {
    return IsFolder(folder) && !protected_.contains(folder);
  }
  bool Delete(const std::string& path);
  std::shared_ptr<File> At(const std::string& path) const;
  /// Makes an empty file, its folders included, and answers its bytes.
  std::string& NewFile(const std::string& path);
  Handle* Of(platform::FileHandle file);
  /// Whether a flush or close keeps what was written; else half of it is gone.
  bool Keeps(const char* operation, const Handle& handle);
  /// The volume of a path: that of its drive or of the folder, mounted, in which it lies.
  std::string VolumeOf(const std::string& path) const;
  using Limits = std::map<std::string, std::uint64_t, CaseBlind>;
  /// What a volume is limited to, in bytes.
  std::uint64_t LimitOf(const Limits& limits, const std::string& path) const;
  /// Whether a file or folder can be made there: its folder exists, and the name is free.
  bool HasRoomFor(const std::string& path) const;
  bool Exists(const std::string& path) const { return At(path) || IsFolder(path); }

  std::map<std::string, std::shared_ptr<File>, CaseBlind> files_;
  std::set<std::string, CaseBlind> folders_;
  std::set<std::string, CaseBlind> protected_;
  Limits room_;
  Limits largest_;
  std::map<std::string, std::string, CaseBlind> mounts_;
  int refusedRenames_ = 0;
  std::map<std::intptr_t, Handle> handles_;
  std::vector<std::string> cdRoms_;
  std::intptr_t nextHandle_ = 0;  // A handle of 0 is as good as any other.
  int temporaryNames_ = 0;
  long long time_ = 0;
  std::uint64_t bytesRead_ = 0;
  int reads_ = 0;
};
