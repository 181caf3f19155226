#include "tests/support/memory_disk.h"

#include <algorithm>
#include <cstring>

namespace {

std::string Trimmed(std::string folder) {
  while (!folder.empty() && folder.back() == '\\') folder.pop_back();
  return folder;
}

std::string ParentOf(const std::string& path) {
  const std::size_t slash = Trimmed(path).rfind('\\');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}

std::string DriveOf(const std::string& path) {
  const std::size_t colon = path.find(':');
  return colon == std::string::npos ? "" : path.substr(0, colon + 1);
}

bool IsSamePath(const std::string& left, const std::string& right) {
  return strcasecmp(left.c_str(), right.c_str()) == 0;
}

}  // namespace

using platform::FileHandle;

std::string& MemoryDisk::NewFile(const std::string& path) {
  for (std::string folder = ParentOf(path); !folder.empty(); folder = ParentOf(folder))
    folders_.insert(folder);
  auto& file = files_[path] = std::make_shared<File>();
  file->permissions = ParentOf(path);
  file->volume = VolumeOf(path);
  return file->bytes;
}

std::string MemoryDisk::Take(const std::string& path) {
  const auto file = At(path);
  files_.erase(path);
  return file ? std::move(file->bytes) : "";
}

std::vector<std::string> MemoryDisk::Paths() const {
  std::vector<std::string> paths;
  for (const auto& [path, file] : files_) paths.push_back(path);
  return paths;
}

std::shared_ptr<MemoryDisk::File> MemoryDisk::At(const std::string& path) const {
  const auto found = files_.find(path);
  return found == files_.end() ? nullptr : found->second;
}

MemoryDisk::Handle* MemoryDisk::Of(FileHandle file) {
  const auto found = handles_.find(static_cast<std::intptr_t>(file));
  return found == handles_.end() ? nullptr : &found->second;
}

std::string MemoryDisk::VolumeOf(const std::string& path) const {
  for (std::string folder = Trimmed(path); !folder.empty(); folder = ParentOf(folder))
    if (const auto mount = mounts.find(folder); mount != mounts.end()) return mount->second;
  return DriveOf(path);
}

bool MemoryDisk::HasRoomFor(const std::string& path) const {
  return !path.empty() && !Exists(path) && TakesNewFiles(ParentOf(path));
}

FileHandle MemoryDisk::Open(const std::string& path, OpenMode mode) {
  if (Fails("open")) return FileHandle::kInvalid;
  auto file = At(path);
  const bool anew = mode == OpenMode::kWriteNew;
  if (!file && (!anew || !HasRoomFor(path))) return FileHandle::kInvalid;
  if (file && file->handles > 0 && (anew || file->mode != mode)) return FileHandle::kInvalid;
  if (!file) Put(path, ""), file = At(path);
  if (anew) {
    file->bytes.clear();
    file->unflushed = 0;
  }
  file->mode = mode;
  ++file->handles;
  handles_[nextHandle_] = {file};
  return static_cast<FileHandle>(nextHandle_++);
}

bool MemoryDisk::Read(FileHandle file, void* buffer, std::uint32_t bytes,
                      std::uint32_t& bytesRead) {
  bytesRead = 0;
  Handle* handle = Of(file);
  if (Fails("read") || !handle || handle->file->IsWritten()) return false;
  bytes = Moved("read", bytes);
  ++reads;
  const std::string& content = handle->file->bytes;
  if (handle->position >= content.size()) return true;
  const std::uint64_t left = content.size() - handle->position;
  bytesRead = static_cast<std::uint32_t>(std::min<std::uint64_t>(bytes, left));
  if (bytesRead > 0) std::memcpy(buffer, content.data() + handle->position, bytesRead);
  handle->position += bytesRead;
  totalRead += bytesRead;
  return true;
}

bool MemoryDisk::Write(FileHandle handle, const void* buffer, std::uint32_t bytes,
                       std::uint32_t& bytesWritten) {
  bytesWritten = 0;
  Handle* open = Of(handle);
  if (Fails("write") || !open || !open->file->IsWritten()) return false;
  bytes = Moved("write", bytes);
  if (bytes == 0) return true;
  File& file = *open->file;
  const std::uint64_t end = open->position + bytes;
  if (end > LimitOf(largest, file.volume)) return false;
  if (end > file.bytes.size()) {
    file.unflushed += end - file.bytes.size();
    file.bytes.resize(end);
  }
  std::memcpy(file.bytes.data() + open->position, buffer, bytes);
  open->position = end;
  bytesWritten = bytes;
  file.written = ++time_;
  return true;
}

bool MemoryDisk::Seek(FileHandle file, std::int64_t position) {
  Handle* handle = Of(file);
  if (Fails("seek") || !handle || position < 0) return false;
  handle->position = static_cast<std::uint64_t>(position);
  return true;
}

std::optional<std::uint64_t> MemoryDisk::Size(FileHandle file) {
  const Handle* handle = Of(file);
  if (Fails("size") || !handle) return std::nullopt;
  return handle->file->bytes.size();
}

bool MemoryDisk::Flush(FileHandle file) {
  const Handle* handle = Of(file);
  if (!handle || !Keeps("flush", *handle->file)) return false;
  handle->file->unflushed = 0;
  return true;
}

bool MemoryDisk::Rename(FileHandle file, const std::string& from, const std::string& to) {
  const Handle* handle = Of(file);
  if (Fails("rename") || !handle || handle->file->mode != OpenMode::kWriteExisting) return false;
  if (handle->file != At(from) || !HasRoomFor(to)) return false;
  if (!IsSamePath(handle->file->volume, VolumeOf(to))) return false;
  if (refusedRenames-- > 0) return false;
  files_.erase(from);
  files_[to] = handle->file;
  return true;
}

bool MemoryDisk::Close(FileHandle file) {
  const auto closed = handles_.extract(static_cast<std::intptr_t>(file));
  if (!closed) return false;
  --closed.mapped().file->handles;
  return Keeps("close", *closed.mapped().file);
}

bool MemoryDisk::Keeps(const char* operation, File& file) {
  if (!Fails(operation)) return true;
  if (file.IsWritten()) file.bytes.resize(file.bytes.size() - (file.unflushed + 1) / 2);
  file.unflushed = 0;
  return false;
}

void MemoryDisk::LoseUnflushed() {
  for (const auto& [path, file] : files_) {
    file->bytes.resize(file->bytes.size() - file->unflushed);
    file->unflushed = 0;
  }
}

std::optional<platform::FileIdentity> MemoryDisk::Identity(FileHandle file) {
  const Handle* handle = Of(file);
  if (Fails("identity") || !handle) return std::nullopt;
  return platform::FileIdentity{1, reinterpret_cast<std::uintptr_t>(handle->file.get())};
}

bool MemoryDisk::Delete(const std::string& path) {
  const auto file = At(path);
  if (!file || file->handles > 0) return false;
  files_.erase(path);
  return true;
}

std::string MemoryDisk::MakeTemporary(const std::string& folder, const std::string& prefix) {
  if (Fails("temporary name") || !TakesNewFiles(folder)) return "";
  const std::string path =
      Trimmed(folder) + "\\" + prefix + std::to_string(++temporaryNames_) + ".tmp";
  Put(path, "");
  return path;
}

bool MemoryDisk::SetTemporary(const std::string& path, bool temporary) {
  const auto file = At(path);
  if (Fails("attribute") || !file) return false;
  file->temporary = temporary;
  return true;
}

bool MemoryDisk::CopyTimes(const std::string& from, const std::string& to) {
  const auto source = At(from), target = At(to);
  if (Fails("times") || !source || !target) return false;
  target->written = source->written;
  return true;
}

bool MemoryDisk::OnSameVolume(const std::string& pathA, const std::string& pathB) {
  return !Fails("same volume") && Exists(pathA) && Exists(pathB) &&
         IsSamePath(VolumeOf(pathA), VolumeOf(pathB));
}

bool MemoryDisk::InheritPermissions(const std::string& path) {
  const auto file = At(path);
  if (Fails("permissions") || !file) return false;
  file->permissions = ParentOf(path);
  return true;
}

bool MemoryDisk::IsFolder(const std::string& path) const {
  const std::string folder = Trimmed(path);
  return folder.empty() || folder == DriveOf(folder) || folders_.count(folder) > 0;
}

std::optional<std::uint64_t> MemoryDisk::FileBytes(const std::string& path) {
  const auto file = At(path);
  if (Fails("file bytes") || !file) return std::nullopt;
  return file->bytes.size();
}

bool MemoryDisk::MakeFolder(const std::string& path) {
  return !Fails("make folder") && HasRoomFor(path) && folders_.insert(Trimmed(path)).second;
}

bool MemoryDisk::RemoveFolder(const std::string& path) {
  if (Fails("remove folder") || !IsFolder(path)) return false;
  for (const std::string& file : FilesBelow(path))
    if (!Delete(file)) return false;
  const std::string below = Trimmed(path) + "\\";
  std::erase_if(folders_, [&](const std::string& folder) {
    return IsSamePath(folder.substr(0, below.size()), below);
  });
  folders_.erase(Trimmed(path));
  return true;
}

bool MemoryDisk::RemoveFilesIn(const std::string& folder) {
  if (Fails("remove files") || !IsFolder(folder)) return false;
  for (const std::string& file : FilesBelow(folder))
    if (ParentOf(file).size() == Trimmed(folder).size() && !Delete(file)) return false;
  return true;
}

std::vector<std::string> MemoryDisk::FilesBelow(const std::string& folder) {
  const std::string below = Trimmed(folder) + "\\";
  std::vector<std::string> paths;
  for (const auto& [path, file] : files_) {
    if (IsSamePath(path.substr(0, below.size()), below)) paths.push_back(path);
  }
  return paths;
}
