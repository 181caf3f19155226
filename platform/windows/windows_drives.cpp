#include "platform/windows/windows_drives.h"

#include "platform/windows/text.h"
#include "platform/windows/win32.h"

namespace platform {
namespace {

struct Entry {
  std::string path;
  DWORD attributes;

  bool IsFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  bool IsLink() const { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
};

// The wide calls: a name's room in the other ones' answer counts bytes of UTF-8.
std::vector<Entry> EntriesOf(const std::string& folder) {
  std::vector<Entry> entries;
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW(Wide(folder + "\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return entries;
  do {
    const std::string name = Utf8(found.cFileName);
    if (name != "." && name != "..")
      entries.push_back({folder + "\\" + name, found.dwFileAttributes});
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return entries;
}

void MakeWritable(const Entry& entry) {
  if (entry.attributes & FILE_ATTRIBUTE_READONLY)
    SetFileAttributesA(entry.path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

/// Where the path really lies; a link itself where the system can tell it from what it leads to.
std::wstring FinalPath(const std::string& path) {
  const HANDLE opened = CreateFileA(
      path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return {};
  std::wstring final(GetFinalPathNameByHandleW(opened, nullptr, 0, 0), L'\0');
  final.resize(
      GetFinalPathNameByHandleW(opened, final.data(), static_cast<DWORD>(final.size()), 0));
  CloseHandle(opened);
  return final;
}

/// Whether deleting the entry would delete something outside its folder. Wine deletes what a link
/// leads to, where Windows deletes the link.
bool LeadsElsewhere(const Entry& entry) {
  const std::size_t slash = entry.path.rfind('\\');
  std::wstring folder = FinalPath(entry.path.substr(0, slash + 1));
  // A drive that the system has given no mount name counts as itself; what is a link there is
  // known by its mark.
  if (folder.empty()) return false;
  while (!folder.empty() && folder.back() == L'\\') folder.pop_back();
  const std::wstring here = folder + Wide(entry.path.substr(slash));
  return _wcsicmp(here.c_str(), FinalPath(entry.path).c_str()) != 0;
}

// Moved onto the link, an empty file takes its place, and what the link leads to stays.
bool ReplaceByEmptyFile(const Entry& link) {
  wchar_t empty[MAX_PATH] = {};
  const std::string folder = link.path.substr(0, link.path.rfind('\\') + 1);
  if (!GetTempFileNameW(Wide(folder).c_str(), L"lnk", 0, empty)) return false;
  if (MoveFileExW(empty, Wide(link.path).c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
  DeleteFileW(empty);
  return false;
}

bool RemoveFile(const Entry& file) {
  if (LeadsElsewhere(file) && !ReplaceByEmptyFile(file)) return false;
  MakeWritable(file);
  return DeleteFileA(file.path.c_str());
}

bool RemoveTree(const Entry& folder) {
  if (LeadsElsewhere(folder)) return false;
  bool all = true;
  // A link is removed itself; what it leads to is not ours.
  if (!folder.IsLink())
    for (const Entry& entry : EntriesOf(folder.path))
      all &= entry.IsFolder() ? RemoveTree(entry) : RemoveFile(entry);
  MakeWritable(folder);
  return RemoveDirectoryA(folder.path.c_str()) && all;
}

void CollectFiles(const std::string& folder, std::vector<std::string>& files) {
  for (const Entry& entry : EntriesOf(folder)) {
    if (!entry.IsFolder())
      files.push_back(entry.path);
    else if (!entry.IsLink())
      CollectFiles(entry.path, files);
  }
}

}  // namespace

std::vector<std::string> WindowsDrives::CdRomDrives() {
  std::vector<std::string> drives;
  const DWORD present = GetLogicalDrives();
  for (int i = 0; i < 26; ++i) {
    if (!(present >> i & 1)) continue;
    const std::string drive = {static_cast<char>('A' + i), ':'};
    if (GetDriveTypeA((drive + "\\").c_str()) == DRIVE_CDROM) drives.push_back(drive);
  }
  return drives;
}

bool WindowsDrives::HasFile(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool WindowsDrives::HasFolder(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::optional<std::uint64_t> WindowsDrives::FileBytes(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA about = {};
  if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &about)) return {};
  if (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return {};
  return std::uint64_t{about.nFileSizeHigh} << 32 | about.nFileSizeLow;
}

bool WindowsDrives::MakeFolder(const std::string& path) {
  return CreateDirectoryA(path.c_str(), nullptr);
}

bool WindowsDrives::RemoveFolder(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return false;
  return RemoveTree({path, attributes});
}

bool WindowsDrives::RemoveFilesIn(const std::string& folder) {
  bool all = true;
  for (const Entry& entry : EntriesOf(folder))
    if (!entry.IsFolder()) all &= RemoveFile(entry);
  return all;
}

std::vector<std::string> WindowsDrives::FilesBelow(const std::string& folder) {
  std::vector<std::string> files;
  CollectFiles(folder, files);
  return files;
}

}  // namespace platform
