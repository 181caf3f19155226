#include "platform/windows/windows_file_names.h"

#include "platform/windows/text.h"
#include "platform/windows/win32.h"

namespace platform {
namespace {

bool Exists(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

// The attributes rather than a search, to which an asterisk in the path would be a pattern.
bool WindowsFileNames::Find(const std::string& path) {
  constexpr DWORD kNotNormal =
      FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kNotNormal) == 0;
}

// Looked at afterwards: Wine reports success in a folder that refuses the deletion.
bool WindowsFileNames::Remove(const std::string& path) {
  return DeleteFileA(path.c_str()) && !Exists(path);
}

// The wide call: the other one counts the folder's length in bytes of UTF-8 and gives up too soon.
std::string WindowsFileNames::MakeTemporary(const std::string& folder, const std::string& prefix) {
  wchar_t path[MAX_PATH] = {};
  if (!GetTempFileNameW(Wide(folder).c_str(), Wide(prefix).c_str(), 0, path)) return {};
  // Wine answers a name without making the file in a folder that takes none.
  if (GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES) return {};
  return Utf8(path);
}

bool WindowsFileNames::SetTemporary(const std::string& path, bool temporary) {
  return SetFileAttributesA(path.c_str(),
                            temporary ? FILE_ATTRIBUTE_TEMPORARY : FILE_ATTRIBUTE_NORMAL);
}

bool WindowsFileNames::Move(const std::string& from, const std::string& to) {
  if (Exists(to)) return false;
  if (MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH))
    return true;
  // A copy to another volume that fails on the way may leave what it has of the new file. A file
  // that somebody else has put there meanwhile is not ours to remove.
  const DWORD error = GetLastError();
  const bool theirs = error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS;
  if (!theirs && Exists(from)) DeleteFileA(to.c_str());
  return false;
}

std::uint64_t WindowsFileNames::FreeBytes(const std::string& root) {
  ULARGE_INTEGER available = {}, total = {}, free = {};
  if (!GetDiskFreeSpaceExA(root.c_str(), &available, &total, &free)) return 0;
  return free.QuadPart;
}

}  // namespace platform
