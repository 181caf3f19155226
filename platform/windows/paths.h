#pragma once

#include <string>

#include "platform/paths.h"
#include "platform/windows/win32.h"

namespace platform {

/// A path for the system's calls. One that is too long for them is marked so that they take it
/// whatever the machine's settings are.
std::wstring WidePath(const std::string& path);

/// A file or folder that is open for itself rather than for what it holds; closed in the end.
class OpenedEntry {
 public:
  /// `flags` go with those that open folders as well.
  explicit OpenedEntry(const std::string& path, DWORD rights = 0, DWORD flags = 0);
  ~OpenedEntry();
  OpenedEntry(const OpenedEntry&) = delete;
  OpenedEntry& operator=(const OpenedEntry&) = delete;

  /// `INVALID_HANDLE_VALUE` when it could not be opened.
  HANDLE handle() const { return handle_; }
  /// Where it really lies; empty when that cannot be told.
  std::wstring FinalPath() const;

 private:
  HANDLE handle_;
};

}  // namespace platform
