#pragma once

#include "platform/drives.h"

/// The folders of a POSIX system; paths are the system's own, with slashes.
class PosixDrives : public platform::Drives {
 public:
  /// None: a disc is a folder like any other.
  std::vector<std::string> CdRomDrives() override { return {}; }
  bool HasFile(const std::string& path) override;
  bool HasFolder(const std::string& path) override;
  std::optional<std::uint64_t> FileBytes(const std::string& path) override;
  bool MakeFolder(const std::string& path) override;
  bool RemoveFolder(const std::string& path) override;
  bool RemoveFilesIn(const std::string& folder) override;
  std::vector<std::string> FilesBelow(const std::string& folder) override;
};
