#include "platform/windows/factories.h"

#include <limits>
#include <optional>

#include "platform/windows/failure.h"
#include "platform/windows/paths.h"
#include "platform/windows/text.h"
// After windows.h, which it needs.
#include <aclapi.h>

namespace platform {
namespace {

bool Exists(const std::string& path) {
  return GetFileAttributesW(WidePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// The root of the volume on which the path lies; empty when it cannot be told.
std::wstring VolumeOf(const std::string& path) {
  const std::wstring final = OpenedEntry(path).FinalPath();
  std::wstring volume(final.size() + 2, L'\0');  // A backslash and a zero may follow.
  if (final.empty() ||
      !GetVolumePathNameW(final.c_str(), volume.data(), static_cast<DWORD>(volume.size())))
    return {};
  volume.resize(wcslen(volume.c_str()));
  return volume;
}

/// Whether a file's or folder's access list holds anything that a folder has handed down; none when
/// it cannot be told.
std::optional<bool> HasInheritedPermissions(const std::wstring& path) {
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                            nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS)
    return {};
  bool inherited = false;
  void* entry = nullptr;
  for (DWORD i = 0; list && GetAce(list, i, &entry); ++i)
    inherited |= (static_cast<const ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE) != 0;
  LocalFree(descriptor);
  return inherited;
}

class WindowsFileNames : public FileNames {
 public:
  // The attributes rather than a search, to which an asterisk in the path would be a pattern.
  Standing LookAt(const std::string& path) override {
    using Kind = Failure::Kind;
    const DWORD attributes = GetFileAttributesW(WidePath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
      const DWORD error = GetLastError();
      if (error == ERROR_FILE_NOT_FOUND && !path.empty()) return {};
      return {.hindrance = FailureOf(error)};
    }
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return {true, Failure{Kind::kFolder}};
    if (attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM))
      return {true, Failure{Kind::kUnseen}};
    // Wine would replace it.
    if (attributes & FILE_ATTRIBUTE_READONLY) return {true, Failure{Kind::kFileProtected}};
    const OpenedEntry entry(path, DELETE, FILE_FLAG_OPEN_REPARSE_POINT);
    if (entry.handle() == INVALID_HANDLE_VALUE) return {true, FailureOf(GetLastError())};
    if (GetFileType(entry.handle()) != FILE_TYPE_DISK) return {true, Failure{}};
    return {.isTaken = true};
  }

  std::string FolderOf(const std::string& path) override { return platform::FolderOf(path); }

  // Looked at afterwards: Wine reports success in a folder that refuses the deletion.
  bool Remove(const std::string& path) override {
    return DeleteFileW(WidePath(path).c_str()) && !Exists(path);
  }

  bool CopyTimes(const std::string& from, const std::string& to) override {
    const OpenedEntry source(from, FILE_READ_ATTRIBUTES);
    const OpenedEntry target(to, FILE_WRITE_ATTRIBUTES);
    FILETIME made = {}, written = {};
    return GetFileTime(source.handle(), &made, nullptr, &written) &&
           SetFileTime(target.handle(), &made, nullptr, &written);
  }

  std::uint64_t FreeBytes(const std::string& folder) override {
    ULARGE_INTEGER available = {}, total = {}, free = {};
    // A share is known only with a separator at its end.
    if (!GetDiskFreeSpaceExW(WidePath(PathIn(folder, "")).c_str(), &available, &total, &free))
      return 0;
    return free.QuadPart;
  }

  std::uint64_t LargestFile(const std::string& folder) override {
    constexpr std::uint64_t kLargestOnFat = std::numeric_limits<std::uint32_t>::max();
    wchar_t system[MAX_PATH + 1] = {};
    GetVolumeInformationW(VolumeOf(folder).c_str(), nullptr, 0, nullptr, nullptr, nullptr, system,
                          MAX_PATH + 1);
    // FAT, FAT16, FAT32; exFAT has other limits.
    return _wcsnicmp(system, L"FAT", 3) == 0 ? kLargestOnFat
                                             : std::numeric_limits<std::uint64_t>::max();
  }

  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override {
    const std::wstring volume = VolumeOf(pathA);
    return !volume.empty() && _wcsicmp(volume.c_str(), VolumeOf(pathB).c_str()) == 0;
  }

  // Where neither the file nor its folder has inherited anything, nothing is handed down that could
  // be wrong. So it always is under Wine, which makes access lists up from the files' modes, and
  // would make each file executable that gets those of its folder.
  bool InheritPermissions(const std::string& path) override {
    std::wstring name = WidePath(path);
    const std::optional<bool> inherited = HasInheritedPermissions(name);
    if (!inherited) return false;
    const std::wstring folder = name.substr(0, name.rfind(L'\\') + 1);
    if (!*inherited && !HasInheritedPermissions(folder).value_or(false)) return true;
    ACL nothing = {};
    InitializeAcl(&nothing, sizeof nothing, ACL_REVISION);
    return SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                                 DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION,
                                 nullptr, nullptr, &nothing, nullptr) == ERROR_SUCCESS;
  }
};

}  // namespace

std::unique_ptr<FileNames> MakeWindowsFileNames() {
  return std::make_unique<WindowsFileNames>();
}

}  // namespace platform
