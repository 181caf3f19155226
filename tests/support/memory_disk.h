#pragma once

#include <strings.h>

#include <algorithm>
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
#include "platform/paths.h"
#include "tests/support/fault.h"

/// A whole disk in memory, for tests and fuzzers: drives, folders and files by Windows paths,
/// compared without regard to case. What is being written is nobody else's while it is open, and an
/// open file is neither deleted nor replaced. A fault strikes the calls of the three interfaces. A
/// flush or close that fails loses half of what was written since the last flush, and a close that
/// fails has closed the file all the same.
class MemoryDisk : public platform::Files, public platform::FileNames, public platform::Drives {
 public:
  using FileHandle = platform::FileHandle;
  using OpenMode = platform::OpenMode;
  using Failure = platform::Failure;

  struct File {
    std::string bytes;
    bool hidden = false;
    bool readOnly = false;
    bool temporary = false;   ///< Goes when it is closed.
    bool hasIdentity = true;  ///< `Identity` can tell it from others.
    long long written = 0;    ///< When: the number of the last write, unless a test says otherwise.
    std::string permissions;  ///< The folder that has handed them down.
    std::string volume;
    int handles = 0;
    bool isWritten = false;       ///< By the handle that is open.
    std::uint64_t unflushed = 0;  ///< Bytes at the end.
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
  /// Whether a temporary file goes by itself when it is closed, as not every disk lets it.
  bool removesTemporary = true;
  /// A folder in which no file can be made.
  std::string sealed;
  /// Folders that are, with what lies below them, a volume of their own ("F:").
  std::map<std::string, std::string, CaseBlind> mounts;
  /// So many of the next calls of `Rename` fail, and their files stay as they are.
  int refusedRenames = 0;
  /// By their paths; a linked file is there by several.
  std::map<std::string, std::shared_ptr<File>, CaseBlind> files;
  /// Bytes read and calls of `Read` so far.
  std::uint64_t totalRead = 0;
  int reads = 0;

  /// Puts a file there, its folders included.
  void Put(const std::string& path, std::string bytes) {
    for (std::string folder = ParentOf(path); !folder.empty(); folder = ParentOf(folder))
      folders_.insert(folder);
    files[path] = std::make_shared<File>(
        File{.bytes = std::move(bytes), .permissions = ParentOf(path), .volume = VolumeOf(path)});
  }
  /// Gives a file another name, as a hard link does.
  void Link(const std::string& from, const std::string& to) { files[to] = At(from); }
  /// The file of this path; null when there is none.
  std::shared_ptr<File> At(const std::string& path) const {
    const auto found = files.find(path);
    return found == files.end() ? nullptr : found->second;
  }
  /// The bytes of a file that is there, for as long as it stays as it is.
  std::string_view View(const std::string& path) const { return At(path)->bytes; }
  /// The bytes of a file; none when there is no such file.
  std::optional<std::string> Bytes(const std::string& path) const {
    return At(path) ? std::optional(At(path)->bytes) : std::nullopt;
  }
  /// Takes a file away and answers its bytes; nothing when there is no such file.
  std::string Take(const std::string& path) {
    const auto file = At(path);
    files.erase(path);
    return file ? std::move(file->bytes) : "";
  }
  /// What a loss of power does: what was written since the last flush is gone, and so is the name
  /// that a file has got since.
  void LoseUnflushed() {
    if (beforeRename_) files = *std::exchange(beforeRename_, std::nullopt);
    for (const auto& [path, file] : files) {
      file->bytes.resize(file->bytes.size() - file->unflushed);
      file->unflushed = 0;
    }
  }
  /// Number of handles that are open.
  std::size_t OpenHandles() const { return handles_.size(); }

  FileHandle Open(const std::string& path, OpenMode mode) override {
    if (Fails("open")) return FileHandle::kInvalid;
    auto file = At(path);
    const bool anew = mode == OpenMode::kWriteNew;
    if (!file && (!anew || !HasRoomFor(path))) return Refused(Failure::Kind::kMissing);
    if (file && file->handles > 0 && (anew || file->isWritten))
      return Refused(Failure::Kind::kInUse);
    if (!file) Put(path, ""), file = At(path);
    if (anew) {
      file->bytes.clear();
      file->unflushed = 0;
    }
    return Opened(file, anew);
  }

  platform::TemporaryFile MakeTemporary(const std::string& folder,
                                        const std::string& prefix) override {
    if (Fails("temporary file") || !IsFolder(folder)) return {};
    if (IsSamePath(folder, sealed)) return {Refused(Failure::Kind::kDiskProtected), ""};
    const std::string path =
        platform::WithoutEnd(folder) + "\\" + prefix + std::to_string(++temporaryNames_) + ".tmp";
    Put(path, "");
    At(path)->temporary = true;
    return {Opened(At(path), true), path};
  }

  bool Read(FileHandle file, void* buffer, std::uint32_t bytes, std::uint32_t& bytesRead) override {
    bytesRead = 0;
    Handle* handle = Of(file);
    if (Fails("read") || !handle || handle->file->isWritten) return false;
    const std::string_view content = handle->file->bytes;
    const std::size_t start = std::min<std::size_t>(handle->position, content.size());
    bytesRead = static_cast<std::uint32_t>(
        content.copy(static_cast<char*>(buffer), Moved("read", bytes), start));
    handle->position += bytesRead;
    totalRead += bytesRead;
    ++reads;
    return true;
  }

  bool Write(FileHandle handle, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override {
    bytesWritten = 0;
    Handle* open = Of(handle);
    if (Fails("write") || !open || !open->file->isWritten) return false;
    bytes = Moved("write", bytes);
    if (bytes == 0) return true;
    File& file = *open->file;
    const std::uint64_t end = open->position + bytes;
    if (end > LimitOf(largest, file.volume)) return false;
    if (end > file.bytes.size()) {
      file.unflushed += end - file.bytes.size();
      file.bytes.resize(std::max<std::size_t>(open->position, file.bytes.size()));
    }
    file.bytes.replace(open->position, bytes, static_cast<const char*>(buffer), bytes);
    open->position = end;
    bytesWritten = bytes;
    file.written = ++time_;
    return true;
  }

  bool Seek(FileHandle file, std::int64_t position) override {
    Handle* handle = Of(file);
    if (Fails("seek") || !handle || position < 0) return false;
    handle->position = static_cast<std::uint64_t>(position);
    return true;
  }

  std::optional<std::uint64_t> Size(FileHandle file) override {
    const Handle* handle = Of(file);
    if (Fails("size") || !handle) return std::nullopt;
    return handle->file->bytes.size();
  }

  std::future<platform::Flushed> Flush(FileHandle file) override {
    const Handle* handle = Of(file);
    const bool flushed = handle && Keeps("flush", *handle->file);
    if (flushed) {
      handle->file->unflushed = 0;
      beforeRename_.reset();
    }
    std::promise<platform::Flushed> answer;
    answer.set_value({.done = flushed, .why = flushed ? Failure() : fault.reason});
    return answer.get_future();
  }

  bool Keep(FileHandle file, const std::string& path) override {
    const Handle* handle = Of(file);
    if (Fails("keep") || !handle || handle->file != At(path)) return false;
    handle->file->temporary = false;
    return true;
  }

  bool Rename(FileHandle file, const std::string& from, const std::string& to,
              platform::IfTaken ifTaken) override {
    Handle* handle = Of(file);
    if (Fails("rename") || !handle || handle->file != At(from) || handle->file->temporary)
      return false;
    const platform::Standing standing = StandingAt(to);
    if (standing.hindrance || (standing.isTaken && ifTaken == platform::IfTaken::kRefuse))
      return false;
    if (!IsSamePath(handle->file->volume, VolumeOf(to))) return false;
    if (IsSamePath(ParentOf(to), sealed)) return false;
    if (refusedRenames-- > 0) return false;
    if (!std::exchange(handle->letsGo, true)) --handle->file->handles;
    beforeRename_ = files;
    files.erase(from);
    files[to] = handle->file;
    return true;
  }

  bool Close(FileHandle file) override {
    const auto closed = handles_.extract(static_cast<std::intptr_t>(file));
    if (!closed) return false;
    const std::shared_ptr<File> gone = closed.mapped().file;
    if (!closed.mapped().letsGo) --gone->handles;
    if (gone->temporary && removesTemporary)
      std::erase_if(files, [&](const auto& each) { return each.second == gone; });
    return Keeps("close", *gone);
  }

  std::optional<platform::FileIdentity> Identity(FileHandle file) override {
    const Handle* handle = Of(file);
    if (Fails("identity") || !handle || !handle->file->hasIdentity) return std::nullopt;
    return platform::FileIdentity{
        std::to_string(reinterpret_cast<std::uintptr_t>(handle->file.get()))};
  }

  Failure LastFailure() override { return std::exchange(lastFailure_, {}); }

  platform::Standing LookAt(const std::string& path) override {
    if (Fails("look")) return {.hindrance = fault.reason};
    return StandingAt(path);
  }
  std::string FolderOf(const std::string& path) override { return platform::FolderOf(path); }
  bool Remove(const std::string& path) override { return !Fails("remove") && Delete(path); }

  bool CopyTimes(const std::string& from, const std::string& to) override {
    const auto source = At(from), target = At(to);
    if (Fails("times") || !source || !target) return false;
    target->written = source->written;
    return true;
  }
  std::uint64_t FreeBytes(const std::string& folder) override {
    return Fails("free bytes") ? 0 : LimitOf(room, VolumeOf(folder));
  }
  std::uint64_t LargestFile(const std::string& folder) override {
    return LimitOf(largest, VolumeOf(folder));
  }

  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override {
    return !Fails("same volume") && Exists(pathA) && Exists(pathB) &&
           IsSamePath(VolumeOf(pathA), VolumeOf(pathB));
  }

  bool InheritPermissions(const std::string& path) override {
    const auto file = At(path);
    if (Fails("permissions") || !file) return false;
    file->permissions = ParentOf(path);
    return true;
  }

  std::vector<std::string> CdRomDrives() override { return cdRoms; }
  bool HasFile(const std::string& path) override { return !Fails("has file") && At(path); }
  bool HasFolder(const std::string& path) override {
    return !Fails("has folder") && !path.empty() && IsFolder(path);
  }

  std::optional<std::uint64_t> FileBytes(const std::string& path) override {
    const auto file = At(path);
    if (Fails("file bytes") || !file) return std::nullopt;
    return file->bytes.size();
  }

  bool MakeFolder(const std::string& path) override {
    return !Fails("make folder") && HasRoomFor(path) &&
           folders_.insert(platform::WithoutEnd(path)).second;
  }

  bool RemoveFolder(const std::string& path) override {
    if (Fails("remove folder") || !IsFolder(path)) return false;
    for (const std::string& file : FilesBelow(path))
      if (!Delete(file)) return false;
    std::erase_if(folders_, [&](const std::string& each) { return IsIn(path, each + "\\"); });
    return true;
  }

  bool RemoveFilesIn(const std::string& folder) override {
    if (Fails("remove files") || !IsFolder(folder)) return false;
    for (const std::string& file : FilesBelow(folder))
      if (IsSamePath(ParentOf(file), platform::WithoutEnd(folder)) && !Delete(file)) return false;
    return true;
  }

  std::vector<std::string> FilesBelow(const std::string& folder) override {
    std::vector<std::string> paths;
    for (const auto& [path, file] : files)
      if (IsIn(folder, path)) paths.push_back(path);
    return paths;
  }

 private:
  static std::string ParentOf(const std::string& path) {
    const std::size_t slash = platform::WithoutEnd(path).rfind('\\');
    return slash == std::string::npos ? "" : path.substr(0, slash);
  }
  static std::string DriveOf(const std::string& path) { return path.substr(0, path.find(':') + 1); }
  static bool IsSamePath(const std::string& left, const std::string& right) {
    return strcasecmp(left.c_str(), right.c_str()) == 0;
  }
  static bool IsIn(const std::string& folder, const std::string& path) {
    const std::string below = platform::WithoutEnd(folder) + "\\";
    return IsSamePath(path.substr(0, below.size()), below);
  }

  struct Handle {
    std::shared_ptr<File> file;
    std::uint64_t position = 0;
    bool letsGo = false;  ///< The file may be replaced.
  };

  FileHandle Opened(const std::shared_ptr<File>& file, bool writes) {
    file->isWritten = writes;
    ++file->handles;
    handles_[nextHandle_] = {file};
    return static_cast<FileHandle>(nextHandle_++);
  }
  FileHandle Refused(Failure::Kind why) {
    lastFailure_ = {why};
    return FileHandle::kInvalid;
  }
  platform::Standing StandingAt(const std::string& path) const {
    using Kind = Failure::Kind;
    if (path.empty() || !IsFolder(ParentOf(path))) return {false, Failure{Kind::kMissing}};
    if (IsFolder(path)) return {true, Failure{Kind::kFolder}};
    const auto file = At(path);
    if (!file) return {};
    if (file->hidden) return {true, Failure{Kind::kUnseen}};
    if (file->readOnly) return {true, Failure{Kind::kFileProtected}};
    if (file->handles > 0) return {true, Failure{Kind::kInUse}};
    return {.isTaken = true};
  }

  static std::uint64_t LimitOf(const Limits& limits, const std::string& volume) {
    return limits.contains(volume) ? limits.at(volume) : UINT64_MAX;
  }
  bool Fails(const char* operation) {
    if (!fault.Strikes(operation)) return false;
    lastFailure_ = fault.reason;
    return true;
  }
  /// How many of the bytes a read or write moves.
  std::uint32_t Moved(const char* operation, std::uint32_t bytes) {
    return fault.Strikes(operation, Fault::Kind::kShortTransfer) ? bytes / 2 : bytes;
  }
  bool IsFolder(const std::string& path) const {
    const std::string folder = platform::WithoutEnd(path);
    return folder.empty() || folder == DriveOf(folder) || folders_.contains(folder);
  }

  bool Delete(const std::string& path) {
    const auto file = At(path);
    if (!file || file->handles > 0) return false;
    files.erase(path);
    return true;
  }

  Handle* Of(FileHandle file) {
    const auto found = handles_.find(static_cast<std::intptr_t>(file));
    return found == handles_.end() ? nullptr : &found->second;
  }
  /// Whether a flush or close keeps what was written; else half of it is gone.
  bool Keeps(const char* operation, File& file) {
    if (!Fails(operation)) return true;
    if (file.isWritten) file.bytes.resize(file.bytes.size() - (file.unflushed + 1) / 2);
    file.unflushed = 0;
    return false;
  }
  /// The volume of a path: that of its drive or of the folder, mounted, in which it lies.
  std::string VolumeOf(const std::string& path) const {
    for (std::string folder = platform::WithoutEnd(path); !folder.empty();
         folder = ParentOf(folder))
      if (const auto mount = mounts.find(folder); mount != mounts.end()) return mount->second;
    return DriveOf(path);
  }
  /// Whether a file or folder can be made there: its folder exists, and the name is free.
  bool HasRoomFor(const std::string& path) const {
    return !path.empty() && !Exists(path) && IsFolder(ParentOf(path));
  }
  bool Exists(const std::string& path) const { return At(path) || IsFolder(path); }

  std::set<std::string, CaseBlind> folders_;
  std::map<std::intptr_t, Handle> handles_;
  std::intptr_t nextHandle_ = 0;  // A handle of 0 is as good as any other.
  int temporaryNames_ = 0;
  std::optional<decltype(files)> beforeRename_;  ///< While the name is not flushed.
  Failure lastFailure_;
  long long time_ = 0;
};
