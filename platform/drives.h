#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Drives, folders and whole files, as a file manager works with them. Paths are UTF-8. An empty
/// drive never raises a box of the system's.
class Drives {
 public:
  virtual ~Drives() = default;

  /// The drives of type CD-ROM, each as letter and colon ("E:"), in the system's order.
  virtual std::vector<std::string> CdRomDrives() = 0;
  /// Whether the path names a file that exists.
  virtual bool HasFile(const std::string& path) = 0;
  /// Whether the path names a folder that exists.
  virtual bool HasFolder(const std::string& path) = 0;
  /// A file's size in bytes; none when it cannot be told.
  virtual std::optional<std::uint64_t> FileBytes(const std::string& path) = 0;
  /// Makes a folder; its parent must exist.
  virtual bool MakeFolder(const std::string& path) = 0;
  /// Deletes a folder with all it holds, read-only files included; a link is removed, not followed.
  /// Stops at what cannot be deleted.
  virtual bool RemoveFolder(const std::string& path) = 0;
  /// Deletes every file directly inside a folder, read-only ones included; its subfolders stay.
  /// Stops at what cannot be deleted.
  virtual bool RemoveFilesIn(const std::string& folder) = 0;
  /// Paths of the files in a folder, its subfolders' included, with one backslash between the
  /// folder and what lies in it; links are not followed.
  virtual std::vector<std::string> FilesBelow(const std::string& folder) = 0;
};

}  // namespace platform
