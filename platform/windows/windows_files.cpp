#include "platform/windows/factories.h"

#include <algorithm>
#include <cstring>
#include <cwctype>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/flusher.h"
#include "platform/windows/failure.h"
#include "platform/windows/paths.h"
#include "platform/windows/text.h"
#include "platform/windows/win32.h"

namespace platform {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE Handle(FileHandle file) {
  return reinterpret_cast<HANDLE>(static_cast<INT_PTR>(file));
}

FileHandle NumberOf(HANDLE handle) {
  return static_cast<FileHandle>(reinterpret_cast<INT_PTR>(handle));
}

HANDLE OpenToReadOrWrite(const std::string& path, OpenMode mode) {
  const std::wstring name = WidePath(path);
  if (mode == OpenMode::kReadExisting)
    return CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  const auto write = [&name](DWORD creation) {
    return CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, creation, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
  };
  // Only what is there already is cut: under Wine even a new file would be, and some file systems
  // write a file that was cut to the disk at once when it is closed.
  const HANDLE opened = write(CREATE_NEW);
  const bool isThere = opened == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS;
  return isThere ? write(CREATE_ALWAYS) : opened;
}

bool SetGoing(HANDLE file, bool goes) {
  FILE_DISPOSITION_INFO info = {};
  info.DeleteFile = goes;
  return SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info);
}

bool IsGoing(HANDLE file) {
  FILE_STANDARD_INFO about = {};
  return !GetFileInformationByHandleEx(file, FileStandardInfo, &about, sizeof about) ||
         about.DeletePending;
}

// Known to Windows 10 from 1607 on, and not to every compiler's headers.
constexpr auto kRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD kReplaceIfExists = 1, kPosixSemantics = 2;

bool RenameBy(HANDLE file, FILE_INFO_BY_HANDLE_CLASS how, DWORD flags, const std::wstring& name) {
  const std::size_t bytes = name.size() * sizeof(wchar_t);
  // The structure ends in room for one character, which the terminating zero takes.
  std::vector<std::byte> room(sizeof(FILE_RENAME_INFO) + bytes);
  auto* info = reinterpret_cast<FILE_RENAME_INFO*>(room.data());
  // In the older form its first byte says whether to replace.
  std::memcpy(info, &flags, sizeof flags);
  info->FileNameLength = static_cast<DWORD>(bytes);
  name.copy(info->FileName, name.size());
  return SetFileInformationByHandle(file, how, info, static_cast<DWORD>(room.size()));
}

/// The same bytes for every name of a file, as long as `kind` is the same.
template <typename T>
FileIdentity IdentityBy(char kind, const T& about) {
  const auto* bytes = reinterpret_cast<const char*>(&about);
  return {kind + std::string(bytes, bytes + sizeof about)};
}

FileIdentity IdentityByPath(HANDLE file) {
  std::wstring path = FinalPathOf(file);
  for (wchar_t& c : path) c = static_cast<wchar_t>(std::towlower(c));
  return {"path " + Utf8(path)};
}

std::optional<FileIdentity> IdentityByIndex(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION about = {};
  if (!GetFileInformationByHandle(file, &about)) return {};
  const std::uint64_t index = std::uint64_t{about.nFileIndexHigh} << 32 | about.nFileIndexLow;
  // What says nothing is the same for many files.
  if (index == 0 || index == ~std::uint64_t{0}) return IdentityByPath(file);
  return IdentityBy('i', std::pair{std::uint64_t{about.dwVolumeSerialNumber}, index});
}

/// Windows lets no other call into a handle that is being flushed: the flush has one of its own
/// where the file may be opened once more, for as long as the file is open. Closing one time and
/// again would wake virus scanners.
class Flushing {
 public:
  explicit Flushing(HANDLE file)
      : own_(ReOpenFile(file, GENERIC_WRITE, kShareAll, 0)),
        used_(own_.get() != INVALID_HANDLE_VALUE ? own_.get() : file) {}

  std::future<Flushed> Begin() {
    return flusher_.Begin([used = used_]() -> Flushed {
      if (FlushFileBuffers(used)) return {.done = true};
      const DWORD error = GetLastError();
      // What knows no flush keeps nothing back that one could wait for.
      if (error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED) return {.done = true};
      return {.why = FailureOf(error)};
    });
  }

 private:
  OwnedHandle own_;
  HANDLE used_;
  Flusher flusher_;  // Ends before the handle is closed: below, so destroyed first.
};

class WindowsFiles : public Files {
 public:
  FileHandle Open(const std::string& path, OpenMode mode) override {
    const HANDLE opened = OpenToReadOrWrite(path, mode);
    Noted(opened != INVALID_HANDLE_VALUE);
    return NumberOf(opened);
  }

  // Not by the system's call for a free name, which takes no long folder and closes the file again.
  TemporaryFile MakeTemporary(const std::string& folder, const std::string& prefix) override {
    std::string path;
    const HANDLE file = MakeUnique(folder, prefix, GENERIC_WRITE | DELETE | FILE_READ_ATTRIBUTES,
                                   FILE_ATTRIBUTE_TEMPORARY, path);
    if (!Noted(file != INVALID_HANDLE_VALUE)) return {};
    // Marked, it cannot be opened again: the flush gets its handle before.
    FlushingOf(file);
    SetGoing(file, true);
    return {NumberOf(file), path};
  }

  bool Read(FileHandle file, void* buffer, std::uint32_t bytes, std::uint32_t& bytesRead) override {
    DWORD count = 0;
    const BOOL done = ReadFile(Handle(file), buffer, bytes, &count, nullptr);
    bytesRead = count;
    return Noted(done);
  }

  bool Write(FileHandle file, const void* buffer, std::uint32_t bytes,
             std::uint32_t& bytesWritten) override {
    DWORD count = 0;
    const BOOL done = WriteFile(Handle(file), buffer, bytes, &count, nullptr);
    bytesWritten = count;
    return Noted(done);
  }

  bool Seek(FileHandle file, std::int64_t position) override {
    LARGE_INTEGER distance = {};
    distance.QuadPart = position;
    return Noted(SetFilePointerEx(Handle(file), distance, nullptr, FILE_BEGIN));
  }

  std::optional<std::uint64_t> Size(FileHandle file) override {
    LARGE_INTEGER size = {};
    if (!Noted(GetFileSizeEx(Handle(file), &size))) return {};
    return static_cast<std::uint64_t>(size.QuadPart);
  }

  std::future<Flushed> Flush(FileHandle file) override { return FlushingOf(Handle(file))->Begin(); }

  bool Keep(FileHandle file, const std::string&) override {
    // A file system that knows no mark refuses to take it back as well.
    if (!SetGoing(Handle(file), false) && IsGoing(Handle(file))) return Noted(FALSE);
    // Backup tools leave out temporary files.
    FILE_BASIC_INFO lasting = {};
    lasting.FileAttributes = FILE_ATTRIBUTE_ARCHIVE;
    SetFileInformationByHandle(Handle(file), FileBasicInfo, &lasting, sizeof lasting);
    return true;
  }

  // Through the handle: another program that has the file open cannot hinder it then. By the
  // semantics of POSIX, where they are known, what others read goes under their hands.
  bool Rename(FileHandle file, const std::string&, const std::string& to,
              IfTaken ifTaken) override {
    const std::wstring name = WidePath(to);
    FILE_BASIC_INFO before = {}, made = {};
    GetFileInformationByHandleEx(Handle(file), FileBasicInfo, &before, sizeof before);
    const bool replaces = ifTaken == IfTaken::kReplace;
    if (!(replaces &&
          RenameBy(Handle(file), kRenameInfoEx, kReplaceIfExists | kPosixSemantics, name)) &&
        !Noted(RenameBy(Handle(file), FileRenameInfo, replaces ? kReplaceIfExists : 0, name)))
      return false;
    // File systems hand the moment on at which what had the name was made.
    made.CreationTime = before.CreationTime;
    SetFileInformationByHandle(Handle(file), FileBasicInfo, &made, sizeof made);
    return true;
  }

  bool Close(FileHandle file) override {
    EndFlushing(file);
    return Noted(CloseHandle(Handle(file)));
  }

  std::optional<FileIdentity> Identity(FileHandle file) override {
    if (GetFileType(Handle(file)) != FILE_TYPE_DISK) return {};
    FILE_ID_INFO about = {};
    if (GetFileInformationByHandleEx(Handle(file), FileIdInfo, &about, sizeof about)) {
      const auto all = [&id = about.FileId.Identifier](BYTE value) {
        return std::all_of(std::begin(id), std::end(id),
                           [value](BYTE each) { return each == value; });
      };
      return all(0) || all(0xFF) ? IdentityByPath(Handle(file)) : IdentityBy('f', about);
    }
    // Any other fault would have one file be known in two ways.
    if (!MeansUnknown(GetLastError())) return {};
    return IdentityByIndex(Handle(file));
  }

  Failure LastFailure() override { return lastFailure_; }

 private:
  /// What flushes a file, from now on.
  std::shared_ptr<Flushing> FlushingOf(HANDLE file) {
    const std::lock_guard lock(mutex_);
    auto& flushing = flushing_[NumberOf(file)];
    if (!flushing) flushing = std::make_shared<Flushing>(file);
    return flushing;
  }

  void EndFlushing(FileHandle file) {
    decltype(flushing_)::node_type ended;  // Outlives the lock, which is not held while it waits.
    const std::lock_guard lock(mutex_);
    ended = flushing_.extract(file);
  }

  /// Takes down the system's last error unless a call has succeeded, and hands its answer on.
  bool Noted(BOOL done) {
    if (!done) lastFailure_ = FailureOf(GetLastError());
    return done;
  }

  std::mutex mutex_;
  std::map<FileHandle, std::shared_ptr<Flushing>> flushing_;
  static thread_local Failure lastFailure_;
};

thread_local Failure WindowsFiles::lastFailure_;

}  // namespace

std::unique_ptr<Files> MakeWindowsFiles() {
  return std::make_unique<WindowsFiles>();
}

}  // namespace platform
