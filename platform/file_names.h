#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// Work on files by name. Paths are UTF-8.
class FileNames {
 public:
  virtual ~FileNames() = default;

  /// Whether a normal file (neither hidden nor a system file nor a folder) has this path.
  virtual bool Find(const std::string& path) = 0;
  /// Deletes a file.
  virtual bool Remove(const std::string& path) = 0;
  /// Makes an empty file with a new unique name of the given prefix and the ending ".tmp" in
  /// `folder` and answers its path; empty when that fails.
  virtual std::string MakeTemporary(const std::string& folder, const std::string& prefix) = 0;
  /// Marks a file as temporary, or as a lasting one again; its other marks stay.
  virtual bool SetTemporary(const std::string& path, bool temporary) = 0;
  /// Gives the file `to` the times at which `from` was made and last written. For after `to` was
  /// closed: writing sets its time anew.
  virtual bool CopyTimes(const std::string& from, const std::string& to) = 0;
  /// Total free bytes of the volume with this root, such as "C:\"; 0 when it cannot be told.
  virtual std::uint64_t FreeBytes(const std::string& root) = 0;
  /// The most bytes that a file in this folder can have.
  virtual std::uint64_t LargestFile(const std::string& folder) = 0;
  /// Whether two files or folders that exist lie on one volume, wherever links and mounted folders
  /// lead; false when it cannot be told.
  virtual bool OnSameVolume(const std::string& pathA, const std::string& pathB) = 0;
  /// Gives a file the permissions that its folder hands down, and no others.
  virtual bool InheritPermissions(const std::string& path) = 0;
};

}  // namespace platform
