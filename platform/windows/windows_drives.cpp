#include "platform/windows/factories.h"

#include <algorithm>

#include "platform/windows/paths.h"
#include "platform/windows/text.h"

namespace platform {
namespace {

DWORD AttributesOf(const std::string& path) {
  return GetFileAttributesW(WidePath(path).c_str());
}

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

struct Entry {
  std::string path;
  DWORD attributes;

  bool IsFolder() const { return platform::IsFolder(attributes); }
  bool IsLink() const { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
};

/// What a folder holds; none when not all of it can be read.
std::optional<std::vector<Entry>> EntriesOf(const std::string& folder) {
  std::vector<Entry> entries;
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW(WidePath(PathIn(folder, "*")).c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    // The root of a drive has no entry of its own: an empty one has none at all.
    if (GetLastError() == ERROR_FILE_NOT_FOUND && IsFolder(AttributesOf(folder))) return entries;
    return {};
  }
  do {
    const std::string name = Utf8(found.cFileName);
    if (name != "." && name != "..")
      entries.push_back({PathIn(folder, name), found.dwFileAttributes});
  } while (FindNextFileW(search, &found));
  const bool isWhole = GetLastError() == ERROR_NO_MORE_FILES;
  FindClose(search);
  if (!isWhole) return {};
  return entries;
}

void MakeWritable(const Entry& entry) {
  if (entry.attributes & FILE_ATTRIBUTE_READONLY)
    SetFileAttributesW(WidePath(entry.path).c_str(), FILE_ATTRIBUTE_NORMAL);
}

/// Where the path really lies; a link itself where the system can tell it from what it leads to.
std::wstring OwnPath(const std::string& path) {
  return OpenedEntry(path, 0, FILE_FLAG_OPEN_REPARSE_POINT).FinalPath();
}

/// Whether deleting the entry would delete something outside its folder. Wine deletes what a link
/// leads to, where Windows deletes the link.
bool LeadsElsewhere(const Entry& entry) {
  const std::size_t slash = entry.path.rfind('\\');
  std::wstring folder = OwnPath(entry.path.substr(0, slash + 1));
  // A drive that the system has given no mount name counts as itself; what is a link there is
  // known by its mark.
  if (folder.empty()) return false;
  while (!folder.empty() && folder.back() == L'\\') folder.pop_back();
  const std::wstring here = folder + Wide(entry.path.substr(slash));
  return _wcsicmp(here.c_str(), OwnPath(entry.path).c_str()) != 0;
}

// Moved onto the link, an empty file takes its place, and what the link leads to stays.
bool ReplaceByEmptyFile(const Entry& link) {
  const std::string folder = link.path.substr(0, link.path.rfind('\\') + 1);
  std::string empty;
  const HANDLE made = MakeUnique(folder, "lnk", GENERIC_WRITE, FILE_ATTRIBUTE_NORMAL, empty);
  if (made == INVALID_HANDLE_VALUE) return false;
  CloseHandle(made);
  if (MoveFileExW(WidePath(empty).c_str(), WidePath(link.path).c_str(), MOVEFILE_REPLACE_EXISTING))
    return true;
  DeleteFileW(WidePath(empty).c_str());
  return false;
}

bool RemoveFile(const Entry& file) {
  if (LeadsElsewhere(file) && !ReplaceByEmptyFile(file)) return false;
  MakeWritable(file);
  return DeleteFileW(WidePath(file.path).c_str());
}

/// Removes entries of a folder one by one, as far as `remove` succeeds.
bool RemoveEntries(const std::string& folder, bool (*remove)(const Entry&)) {
  const auto entries = EntriesOf(folder);
  return entries && std::all_of(entries->begin(), entries->end(), remove);
}

bool RemoveTree(const Entry& entry) {
  if (!entry.IsFolder()) return RemoveFile(entry);
  // A link is removed itself; what it leads to is not ours.
  if (LeadsElsewhere(entry) || (!entry.IsLink() && !RemoveEntries(entry.path, RemoveTree)))
    return false;
  MakeWritable(entry);
  return RemoveDirectoryW(WidePath(entry.path).c_str());
}

void CollectFiles(const std::string& folder, std::vector<std::string>& files) {
  for (const Entry& entry : EntriesOf(folder).value_or(std::vector<Entry>())) {
    if (!entry.IsFolder())
      files.push_back(entry.path);
    else if (!entry.IsLink())
      CollectFiles(entry.path, files);
  }
}

class WindowsDrives : public Drives {
 public:
  std::vector<std::string> CdRomDrives() override {
    std::vector<std::string> drives;
    const DWORD present = GetLogicalDrives();
    for (int i = 0; i < 26; ++i) {
      if (!(present >> i & 1)) continue;
      const std::string drive = {static_cast<char>('A' + i), ':'};
      if (GetDriveTypeW(Wide(drive + "\\").c_str()) == DRIVE_CDROM) drives.push_back(drive);
    }
    return drives;
  }

  bool HasFile(const std::string& path) override {
    const DWORD attributes = AttributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
  }

  bool HasFolder(const std::string& path) override { return IsFolder(AttributesOf(path)); }

  std::optional<std::uint64_t> FileBytes(const std::string& path) override {
    WIN32_FILE_ATTRIBUTE_DATA about = {};
    if (!GetFileAttributesExW(WidePath(path).c_str(), GetFileExInfoStandard, &about)) return {};
    if (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return {};
    return std::uint64_t{about.nFileSizeHigh} << 32 | about.nFileSizeLow;
  }

  bool MakeFolder(const std::string& path) override {
    return CreateDirectoryW(WidePath(path).c_str(), nullptr);
  }

  bool RemoveFolder(const std::string& path) override {
    return HasFolder(path) && RemoveTree({WithoutEnd(path), AttributesOf(path)});
  }

  bool RemoveFilesIn(const std::string& folder) override {
    return RemoveEntries(folder,
                         [](const Entry& entry) { return entry.IsFolder() || RemoveFile(entry); });
  }

  std::vector<std::string> FilesBelow(const std::string& folder) override {
    std::vector<std::string> files;
    CollectFiles(folder, files);
    return files;
  }
};

}  // namespace

std::unique_ptr<Drives> MakeWindowsDrives() {
  return std::make_unique<WindowsDrives>();
}

}  // namespace platform
