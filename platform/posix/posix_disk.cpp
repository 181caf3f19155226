#include "platform/posix/factories.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <system_error>
#include <utility>

#include "platform/flusher.h"

namespace platform {
namespace {

using Kind = Failure::Kind;

/// Less what the user's mask takes away.
constexpr mode_t kNewFileMode = 0666;

Failure FailureOf(int error) {
  switch (error) {
    case ENOSPC:
    case EDQUOT:
      return {Kind::kDiskFull};
    case EROFS:
      return {Kind::kDiskProtected};
    case EWOULDBLOCK:
    case EBUSY:
    case ETXTBSY:
      return {Kind::kInUse};
    case ENOENT:
    case ENOTDIR:
      return {Kind::kMissing};
    case EEXIST:
      return {Kind::kTaken};
    case ENXIO:
    case ENODEV:
    case ESTALE:
    case ETIMEDOUT:
      return {Kind::kNoAnswer};
    default:
      return {Kind::kOther, std::system_category().message(error)};
  }
}

bool MeansUnknown(int error) {
  return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

int Descriptor(FileHandle file) {
  return static_cast<int>(file);
}

std::string FolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path();
  return folder.empty() ? "." : folder;
}

/// A name in `folder` that nothing is likely to have.
std::string UniquePath(const std::string& folder, const std::string& prefix) {
  static std::random_device random;
  char number[16] = {};
  std::snprintf(number, sizeof number, "%08X", random());
  return std::filesystem::path(folder) / (prefix + number + ".tmp");
}

/// The path by which a file without a name can be given one; empty where the system shows none.
std::string PathOfNameless(int file) {
  const std::string path = "/proc/self/fd/" + std::to_string(file);
  return access(path.c_str(), F_OK) == 0 ? path : "";
}

/// Opens a file without a name: it goes with its last handle, however its program ends. -1 where
/// that cannot be.
int OpenNameless(const std::string& folder) {
  const int file = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kNewFileMode);
  if (file < 0 || !PathOfNameless(file).empty()) return file;
  close(file);
  return -1;
}

int OpenUnique(const std::string& folder, const std::string& prefix, std::string& path) {
  constexpr int kTries = 100;
  int file = -1;
  for (int i = 0; i < kTries && file < 0; ++i) {
    path = UniquePath(folder, prefix);
    file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kNewFileMode);
    if (file < 0 && errno != EEXIST) break;
  }
  return file;
}

/// Cuts a file to nothing. A new one is left alone: some file systems write a file that was cut to
/// the disk at once when it is closed.
bool Empty(int file) {
  struct stat status = {};
  return fstat(file, &status) == 0 && (status.st_size == 0 || ftruncate(file, 0) == 0);
}

/// Whether the lock is ours, or there are none here.
bool Lock(int file, int lock) {
  return flock(file, lock | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Whether someone has a file open who does not let it go; what is not there is held by no one.
bool IsHeld(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return false;
  const bool isFree = Lock(file, LOCK_EX);
  close(file);
  return !isFree;
}

/// What keeps the opening of a pipe that nothing writes to from waiting for ever.
int FlagsOfPipe(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode) ? O_NONBLOCK : 0;
}

/// Whether the name is the open file's.
bool IsNameOf(const std::string& path, int file) {
  struct stat opened = {}, named = {};
  return fstat(file, &opened) == 0 && stat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Renames onto nothing, by two steps where the file system does not know one for that.
bool RenameOntoNothing(const char* from, const char* to) {
  if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return true;
  return MeansUnknown(errno) && link(from, to) == 0 && unlink(from) == 0;
}

bool Sync(int file) {
  return fsync(file) == 0 || MeansUnknown(errno);
}

/// A folder that cannot be opened, or knows no syncing, is no failure.
bool SyncFolder(const std::string& path) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return true;
  const bool done = Sync(folder) || errno != EIO;
  close(folder);
  return done;
}

/// Locks stand in for the sharing rules: a file that is open for writing is nobody else's until it
/// gets another name, and an open file is neither deleted nor replaced. Where a file system knows
/// no locks, there are no such rules.
class PosixFiles : public Files {
 public:
  FileHandle Open(const std::string& path, OpenMode mode) override {
    const bool anew = mode == OpenMode::kWriteNew;
    const int flags = anew ? O_WRONLY | O_CREAT : O_RDONLY | FlagsOfPipe(path);
    const int opened = open(path.c_str(), flags | O_CLOEXEC, kNewFileMode);
    const FileHandle file = Locked(opened, anew ? LOCK_EX : LOCK_SH);
    // Cut only once the lock is ours: the file may be the source that is being read.
    if (!anew || file == FileHandle::kInvalid || Noted(Empty(opened))) return file;
    close(opened);
    return FileHandle::kInvalid;
  }

  TemporaryFile MakeTemporary(const std::string& folder, const std::string& prefix) override {
    TemporaryFile made = {.path = UniquePath(folder, prefix)};
    int file = OpenNameless(folder);
    if (file < 0) file = OpenUnique(folder, prefix, made.path);
    made.file = Locked(file, LOCK_EX);
    return made.file == FileHandle::kInvalid ? TemporaryFile() : made;
  }

  bool Read(FileHandle file, void* buffer, std::uint32_t bytes, std::uint32_t& bytesRead) override {
    bytesRead = 0;
    while (bytesRead < bytes) {
      const ssize_t n =
          read(Descriptor(file), static_cast<char*>(buffer) + bytesRead, bytes - bytesRead);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) return Noted(n == 0);
      bytesRead += static_cast<std::uint32_t>(n);
    }
    return true;
  }

  bool Write(FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override {
    bytesWritten = 0;
    while (bytesWritten < bytes) {
      const ssize_t n = write(Descriptor(file), static_cast<const char*>(buffer) + bytesWritten,
                              bytes - bytesWritten);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) return Noted(n == 0);
      bytesWritten += static_cast<std::uint32_t>(n);
    }
    return true;
  }

  bool Seek(FileHandle file, std::int64_t position) override {
    return Noted(position >= 0 && lseek(Descriptor(file), position, SEEK_SET) == position);
  }

  std::optional<std::uint64_t> Size(FileHandle file) override {
    struct stat status = {};
    if (!Noted(fstat(Descriptor(file), &status) == 0)) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
  }

  std::future<Flushed> Flush(FileHandle file) override {
    Flushing& flushing = flushing_[file];
    return flushing.flusher.Begin(
        [file = Descriptor(file), folders = std::exchange(flushing.folders, {})]() -> Flushed {
          bool done = Sync(file);
          for (const std::string& folder : folders) done = done && SyncFolder(folder);
          return {.done = done, .why = done ? Failure() : FailureOf(errno)};
        });
  }

  bool Keep(FileHandle file, const std::string& path) override {
    struct stat status = {};
    if (!Noted(fstat(Descriptor(file), &status) == 0)) return false;
    if (status.st_nlink > 0) return true;
    const std::string nameless = PathOfNameless(Descriptor(file));
    if (!Noted(linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0))
      return false;
    flushing_[file].folders.insert(FolderOf(path));
    return true;
  }

  bool Rename(FileHandle file, const std::string& from, const std::string& to,
              IfTaken ifTaken) override {
    if (!IsNameOf(from, Descriptor(file))) return false;
    const bool replaces = ifTaken == IfTaken::kReplace;
    if (replaces && IsHeld(to)) {
      lastFailure_ = {Kind::kInUse};
      return false;
    }
    if (!Noted(replaces ? rename(from.c_str(), to.c_str()) == 0
                        : RenameOntoNothing(from.c_str(), to.c_str())))
      return false;
    flock(Descriptor(file), LOCK_UN);
    for (const std::string& path : {from, to}) flushing_[file].folders.insert(FolderOf(path));
    return true;
  }

  bool Close(FileHandle file) override {
    flushing_.erase(file);
    return Noted(close(Descriptor(file)) == 0);
  }

  std::optional<FileIdentity> Identity(FileHandle file) override {
    struct stat status = {};
    if (fstat(Descriptor(file), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return FileIdentity{std::to_string(status.st_dev) + " " + std::to_string(status.st_ino)};
  }

  Failure LastFailure() override { return lastFailure_; }

 private:
  /// What is flushed with a file: the folders in which its names have changed.
  struct Flushing {
    Flusher flusher;
    std::set<std::string> folders;
  };

  /// Takes down the system's last error unless a call has succeeded, and hands its answer on.
  bool Noted(bool done) {
    if (!done) lastFailure_ = FailureOf(errno);
    return done;
  }

  /// The same for a file that is just open; closes it when it cannot be used.
  FileHandle Locked(int file, int lock) {
    if (!Noted(file >= 0)) return FileHandle::kInvalid;
    struct stat status = {};
    const bool isFolder = fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
    if (!isFolder && Noted(Lock(file, lock))) return static_cast<FileHandle>(file);
    if (isFolder) lastFailure_ = {Kind::kFolder};
    close(file);
    return FileHandle::kInvalid;
  }

  std::map<FileHandle, Flushing> flushing_;
  Failure lastFailure_;
};

class PosixFileNames : public FileNames {
 public:
  Standing LookAt(const std::string& path) override {
    struct stat entry = {}, status = {};
    if (lstat(path.c_str(), &entry) != 0) {
      const int error = errno;
      std::error_code ignored;
      const bool canCome = error == ENOENT &&
                           std::filesystem::is_directory(FolderOf(path), ignored) && !path.empty();
      return canCome ? Standing() : Standing{.hindrance = FailureOf(error)};
    }
    const bool leads = stat(path.c_str(), &status) == 0;
    if (leads && S_ISDIR(status.st_mode)) return {true, Failure{Kind::kFolder}};
    if (S_ISLNK(entry.st_mode)) return {.isTaken = true};
    if (!S_ISREG(entry.st_mode)) return {true, Failure{}};
    // It would be replaced all the same: but that it is protected is meant.
    if ((entry.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
      return {true, Failure{Kind::kFileProtected}};
    if (IsHeld(path)) return {true, Failure{Kind::kInUse}};
    return {.isTaken = true};
  }

  std::string FolderOf(const std::string& path) override { return platform::FolderOf(path); }

  bool Remove(const std::string& path) override {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0 || IsHeld(path)) return false;
    return unlink(path.c_str()) == 0;
  }

  bool CopyTimes(const std::string& from, const std::string& to) override {
    struct stat status = {};
    if (stat(from.c_str(), &status) != 0) return false;
    const timespec times[] = {{0, UTIME_OMIT}, status.st_mtim};
    return utimensat(AT_FDCWD, to.c_str(), times, 0) == 0;
  }

  // The system hands them down when a file is made.
  bool InheritPermissions(const std::string& path) override {
    return access(path.c_str(), F_OK) == 0;
  }

  std::uint64_t FreeBytes(const std::string& folder) override {
    std::error_code error;
    const std::filesystem::space_info space = std::filesystem::space(folder, error);
    return error ? 0 : space.available;
  }

  std::uint64_t LargestFile(const std::string& folder) override {
    constexpr std::uint64_t kLargestOnFat = std::numeric_limits<std::uint32_t>::max();
    struct statfs status = {};
    const bool isFat = statfs(folder.c_str(), &status) == 0 && status.f_type == MSDOS_SUPER_MAGIC;
    return isFat ? kLargestOnFat : std::numeric_limits<std::uint64_t>::max();
  }

  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override {
    struct stat a = {}, b = {};
    return stat(pathA.c_str(), &a) == 0 && stat(pathB.c_str(), &b) == 0 && a.st_dev == b.st_dev;
  }
};

}  // namespace

std::unique_ptr<Files> MakePosixFiles() {
  return std::make_unique<PosixFiles>();
}

std::unique_ptr<FileNames> MakePosixFileNames() {
  return std::make_unique<PosixFileNames>();
}

}  // namespace platform
