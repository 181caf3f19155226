#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/failure.h"

namespace platform {

/// What stands under a path that a new file is to have.
struct Standing {
  bool isTaken = false;
  std::optional<Failure> hindrance = {};  ///< Why no new file can come there.
};

/// Work on files by name. Paths are UTF-8.
class FileNames {
 public:
  virtual ~FileNames() = default;

  /// Looks whether a new file can have this path, in place of what is there. It cannot where there
  /// is no such folder, nor take the place of a folder, of what is no file, of a file that is
  /// hidden or one of the system's (nobody's old target), that is protected, or that others have
  /// open without letting it go. A link may be replaced whatever it leads to, unless to a folder.
  virtual Standing LookAt(const std::string& path) = 0;
  /// The folder of a file's path, by the separators that paths have here: without the last, but for
  /// a root; "." for a path that names none.
  virtual std::string FolderOf(const std::string& path) = 0;
  /// Deletes a file.
  virtual bool Remove(const std::string& path) = 0;
  /// Gives the file `to` the times at which `from` was made and last written. For after `to` was
  /// closed: writing sets its time anew.
  virtual bool CopyTimes(const std::string& from, const std::string& to) = 0;
  /// Gives a file the permissions that its folder hands down, and no others.
  virtual bool InheritPermissions(const std::string& path) = 0;

  /// Total free bytes of the volume on which a folder lies; 0 when it cannot be told.
  virtual std::uint64_t FreeBytes(const std::string& folder) = 0;
  /// The most bytes that a file in this folder can have.
  virtual std::uint64_t LargestFile(const std::string& folder) = 0;
  /// Whether two files or folders that exist lie on one volume, wherever links and mounted folders
  /// lead; false when it cannot be told.
  virtual bool OnSameVolume(const std::string& pathA, const std::string& pathB) = 0;
};

}  // namespace platform
