#include "platform/windows/paths.h"

#include <cstdio>
#include <string_view>

#include "platform/windows/text.h"

namespace platform {
namespace {

// A folder's path leaves room for a short name and its ending.
constexpr std::size_t kLongestUnmarked = MAX_PATH - 13;

bool StartsWith(std::wstring_view text, std::wstring_view start) {
  return text.substr(0, start.size()) == start;
}

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

}  // namespace

std::wstring WidePath(const std::string& path) {
  std::wstring wide = Wide(path);
  if (wide.size() < kLongestUnmarked) return wide;
  const std::wstring full = FullPath(wide);
  // Marked already, or a device.
  if (full.empty() || StartsWith(full, L"\\\\?\\") || StartsWith(full, L"\\\\.\\")) return wide;
  return StartsWith(full, L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

HANDLE MakeUnique(const std::string& folder, const std::string& prefix, DWORD rights,
                  DWORD attributes, std::string& path) {
  constexpr DWORD kNames = 0x10000;
  const DWORD first = GetTickCount();  // Others may be looking for a free name as well.
  HANDLE file = INVALID_HANDLE_VALUE;
  for (DWORD i = 0; i < kNames && file == INVALID_HANDLE_VALUE; ++i) {
    char number[8] = {};
    std::snprintf(number, sizeof number, "%04X", static_cast<unsigned>((first + i) % kNames));
    path = PathIn(folder, prefix + number + ".tmp");
    file = CreateFileW(WidePath(path).c_str(), rights,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                       attributes, nullptr);
    if (file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS) break;
  }
  return file;
}

std::wstring FinalPathOf(HANDLE opened) {
  std::wstring path(GetFinalPathNameByHandleW(opened, nullptr, 0, 0), L'\0');
  path.resize(GetFinalPathNameByHandleW(opened, path.data(), static_cast<DWORD>(path.size()), 0));
  return path;
}

OpenedEntry::OpenedEntry(const std::string& path, DWORD rights, DWORD flags)
    : handle_(CreateFileW(WidePath(path).c_str(), rights,
                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr)) {}

std::wstring OpenedEntry::FinalPath() const {
  return handle() == INVALID_HANDLE_VALUE ? std::wstring() : FinalPathOf(handle());
}

}  // namespace platform
