#include "platform/windows/windows_files.h"

#include <vector>

#include "platform/windows/paths.h"

namespace platform {
namespace {

HANDLE Handle(FileHandle file) {
  return reinterpret_cast<HANDLE>(static_cast<INT_PTR>(file));
}

struct Access {
  DWORD rights;
  DWORD sharing;
  DWORD creation;
};

Access AccessFor(OpenMode mode) {
  switch (mode) {
    case OpenMode::kReadExisting:
      return {GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING};
    case OpenMode::kWriteExisting:
      return {GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
              OPEN_EXISTING};
    case OpenMode::kWriteNew:
      return {GENERIC_WRITE, 0, CREATE_NEW};
  }
  return {};
}

HANDLE OpenFile(const std::string& path, const Access& access) {
  return CreateFileW(WidePath(path).c_str(), access.rights, access.sharing, nullptr,
                     access.creation, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

FileHandle WindowsFiles::Open(const std::string& path, OpenMode mode) {
  Access access = AccessFor(mode);
  HANDLE opened = OpenFile(path, access);
  // Only what is there already is cut: under Wine even a new file would be, and some file systems
  // write a file that was cut to the disk at once when it is closed.
  if (access.creation == CREATE_NEW && opened == INVALID_HANDLE_VALUE &&
      GetLastError() == ERROR_FILE_EXISTS) {
    access.creation = CREATE_ALWAYS;
    opened = OpenFile(path, access);
  }
  return static_cast<FileHandle>(reinterpret_cast<INT_PTR>(opened));
}

bool WindowsFiles::Read(FileHandle file, void* buffer, std::uint32_t bytes,
                        std::uint32_t& bytesRead) {
  DWORD count = 0;
  const BOOL done = ReadFile(Handle(file), buffer, bytes, &count, nullptr);
  bytesRead = count;
  return done;
}

bool WindowsFiles::Write(FileHandle file, const void* buffer, std::uint32_t bytes,
                         std::uint32_t& bytesWritten) {
  DWORD count = 0;
  const BOOL done = WriteFile(Handle(file), buffer, bytes, &count, nullptr);
  bytesWritten = count;
  return done;
}

bool WindowsFiles::Seek(FileHandle file, std::int64_t position) {
  LARGE_INTEGER distance = {};
  distance.QuadPart = position;
  return SetFilePointerEx(Handle(file), distance, nullptr, FILE_BEGIN);
}

std::optional<std::uint64_t> WindowsFiles::Size(FileHandle file) {
  LARGE_INTEGER size = {};
  if (!GetFileSizeEx(Handle(file), &size)) return {};
  return static_cast<std::uint64_t>(size.QuadPart);
}

// Windows lets no other call into a handle that is being flushed: the flush has one of its own
// where the file may be opened once more. Wine does not do that, but lets calls pass each other.
std::future<bool> WindowsFiles::Flush(FileHandle file) {
  const HANDLE own =
      ReOpenFile(Handle(file), GENERIC_WRITE,
                 FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, FILE_ATTRIBUTE_NORMAL);
  return std::async([file, own] {
    const bool hasOwn = own != INVALID_HANDLE_VALUE;
    const bool flushed = hasOwn && FlushFileBuffers(own);
    if (hasOwn) CloseHandle(own);
    return flushed || FlushFileBuffers(Handle(file));
  });
}

// Through the handle: another program that has the file open cannot hinder it then.
bool WindowsFiles::Rename(FileHandle file, const std::string&, const std::string& to) {
  const std::wstring name = WidePath(to);
  const std::size_t bytes = name.size() * sizeof(wchar_t);
  // The structure ends in room for one character, which the terminating zero takes.
  std::vector<std::byte> room(sizeof(FILE_RENAME_INFO) + bytes);
  auto* info = reinterpret_cast<FILE_RENAME_INFO*>(room.data());
  info->FileNameLength = static_cast<DWORD>(bytes);
  name.copy(info->FileName, name.size());
  return SetFileInformationByHandle(Handle(file), FileRenameInfo, info,
                                    static_cast<DWORD>(room.size()));
}

bool WindowsFiles::Close(FileHandle file) {
  return CloseHandle(Handle(file));
}

std::optional<FileIdentity> WindowsFiles::Identity(FileHandle file) {
  BY_HANDLE_FILE_INFORMATION about = {};
  if (GetFileType(Handle(file)) != FILE_TYPE_DISK) return {};
  if (!GetFileInformationByHandle(Handle(file), &about)) return {};
  return FileIdentity{about.dwVolumeSerialNumber,
                      std::uint64_t{about.nFileIndexHigh} << 32 | about.nFileIndexLow};
}

}  // namespace platform
