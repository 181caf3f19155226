#include "platform/posix/posix_disk.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <filesystem>
#include <limits>
#include <system_error>

using platform::FileHandle;
using platform::OpenMode;

namespace {

constexpr mode_t kNewFileMode = 0644;

int Descriptor(FileHandle file) {
  return static_cast<int>(file);
}

bool IsFolder(int file) {
  struct stat status = {};
  return fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
}

/// Cuts a file to nothing. A new one is left alone: some file systems write a file that was cut to
/// the disk at once when it is closed.
bool Empty(int file) {
  struct stat status = {};
  return fstat(file, &status) == 0 && (status.st_size == 0 || ftruncate(file, 0) == 0);
}

}  // namespace

FileHandle PosixDisk::Open(const std::string& path, OpenMode mode) {
  const bool anew = mode == OpenMode::kWriteNew;
  const int flags = mode == OpenMode::kReadExisting ? O_RDONLY : O_WRONLY | (anew ? O_CREAT : 0);
  const int file = open(path.c_str(), flags | O_CLOEXEC, kNewFileMode);
  if (file < 0) return FileHandle::kInvalid;
  // Cut only once the lock is ours: the file may be the source that is being read.
  if (IsFolder(file) ||
      flock(file, (mode == OpenMode::kReadExisting ? LOCK_SH : LOCK_EX) | LOCK_NB) != 0 ||
      (anew && !Empty(file))) {
    close(file);
    return FileHandle::kInvalid;
  }
  return static_cast<FileHandle>(file);
}

bool PosixDisk::Read(FileHandle file, void* buffer, std::uint32_t bytes, std::uint32_t& bytesRead) {
  bytesRead = 0;
  while (bytesRead < bytes) {
    const ssize_t n =
        read(Descriptor(file), static_cast<char*>(buffer) + bytesRead, bytes - bytesRead);
    if (n < 0) return false;
    if (n == 0) return true;
    bytesRead += static_cast<std::uint32_t>(n);
  }
  return true;
}

bool PosixDisk::Write(FileHandle file, const void* buffer, std::uint32_t bytes,
                      std::uint32_t& bytesWritten) {
  bytesWritten = 0;
  while (bytesWritten < bytes) {
    const ssize_t n = write(Descriptor(file), static_cast<const char*>(buffer) + bytesWritten,
                            bytes - bytesWritten);
    if (n <= 0) return false;
    bytesWritten += static_cast<std::uint32_t>(n);
  }
  return true;
}

bool PosixDisk::Seek(FileHandle file, std::int64_t position) {
  return position >= 0 && lseek(Descriptor(file), position, SEEK_SET) == position;
}

std::optional<std::uint64_t> PosixDisk::Size(FileHandle file) {
  struct stat status = {};
  if (fstat(Descriptor(file), &status) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

std::future<bool> PosixDisk::Flush(FileHandle file) {
  return std::async([file] { return fsync(Descriptor(file)) == 0; });
}

bool PosixDisk::Rename(FileHandle file, const std::string& from, const std::string& to) {
  struct stat opened = {}, named = {};
  if (fstat(Descriptor(file), &opened) != 0 || stat(from.c_str(), &named) != 0) return false;
  if (opened.st_dev != named.st_dev || opened.st_ino != named.st_ino) return false;
  return renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0;
}

bool PosixDisk::Close(FileHandle file) {
  return close(Descriptor(file)) == 0;
}

std::optional<platform::FileIdentity> PosixDisk::Identity(FileHandle file) {
  struct stat status = {};
  if (fstat(Descriptor(file), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return platform::FileIdentity{status.st_dev, status.st_ino};
}

bool PosixDisk::Find(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error);
}

bool PosixDisk::Remove(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool isFree = flock(file, LOCK_EX | LOCK_NB) == 0;
  close(file);
  return isFree && unlink(path.c_str()) == 0;
}

std::string PosixDisk::MakeTemporary(const std::string& folder, const std::string& prefix) {
  std::string path = std::filesystem::path(folder) / (prefix + "XXXXXX.tmp");
  const int file = mkstemps(path.data(), 4);
  if (file < 0) return "";
  close(file);
  return path;
}

// There is no such attribute here; what counts is whether the file is there.
bool PosixDisk::SetTemporary(const std::string& path, bool) {
  return Find(path);
}

bool PosixDisk::CopyTimes(const std::string& from, const std::string& to) {
  struct stat status = {};
  if (stat(from.c_str(), &status) != 0) return false;
  const timespec times[] = {{0, UTIME_OMIT}, status.st_mtim};
  return utimensat(AT_FDCWD, to.c_str(), times, 0) == 0;
}

std::uint64_t PosixDisk::FreeBytes(const std::string& root) {
  std::error_code error;
  const std::filesystem::space_info space = std::filesystem::space(root, error);
  return error ? 0 : space.available;
}

std::uint64_t PosixDisk::LargestFile(const std::string& root) {
  constexpr std::uint64_t kLargestOnFat = std::numeric_limits<std::uint32_t>::max();
  struct statfs status = {};
  const bool isFat = statfs(root.c_str(), &status) == 0 && status.f_type == MSDOS_SUPER_MAGIC;
  return isFat ? kLargestOnFat : std::numeric_limits<std::uint64_t>::max();
}

bool PosixDisk::OnSameVolume(const std::string& pathA, const std::string& pathB) {
  struct stat a = {}, b = {};
  return stat(pathA.c_str(), &a) == 0 && stat(pathB.c_str(), &b) == 0 && a.st_dev == b.st_dev;
}

bool PosixDisk::InheritPermissions(const std::string& path) {
  return chmod(path.c_str(), kNewFileMode) == 0;
}
