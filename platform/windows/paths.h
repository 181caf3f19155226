#pragma once

#include <memory>
#include <string>

#include "platform/paths.h"
#include "platform/windows/win32.h"

namespace platform {

/// A path for the system's calls. One that is too long for them is marked so that they take it
/// whatever the machine's settings are.
std::wstring WidePath(const std::string& path);

/// Makes and opens an empty file of a new name, the prefix and the ending ".tmp", in a folder;
/// others may share all that is done with it. Sets `path`; `INVALID_HANDLE_VALUE` when that fails.
HANDLE MakeUnique(const std::string& folder, const std::string& prefix, DWORD rights,
                  DWORD attributes, std::string& path);

/// Where an open file or folder really lies; empty when that cannot be told.
std::wstring FinalPathOf(HANDLE opened);

/// Closes what is open.
struct HandleCloser {
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};

/// A handle that is closed in the end; `INVALID_HANDLE_VALUE` for none.
using OwnedHandle = std::unique_ptr<void, HandleCloser>;

/// A file or folder that is open for itself rather than for what it holds; closed in the end.
class OpenedEntry {
 public:
  /// `flags` go with those that open folders as well.
  explicit OpenedEntry(const std::string& path, DWORD rights = 0, DWORD flags = 0);

  /// `INVALID_HANDLE_VALUE` when it could not be opened.
  HANDLE handle() const { return handle_.get(); }
  /// Where it really lies; empty when that cannot be told.
  std::wstring FinalPath() const;

 private:
  OwnedHandle handle_;
};

}  // namespace platform
