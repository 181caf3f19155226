#pragma once

#include "platform/drives.h"

namespace platform {

/// Drives, folders and files of Windows.
class WindowsDrives : public Drives {
 public:
  std::vector<std::string> CdRomDrives() override;
  bool HasFile(const std::string& path) override;
  bool HasFolder(const std::string& path) override;
  std::optional<std::uint64_t> FileBytes(const std::string& path) override;
  bool MakeFolder(const std::string& path) override;
  bool RemoveFolder(const std::string& path) override;
  bool RemoveFilesIn(const std::string& folder) override;
  std::vector<std::string> FilesBelow(const std::string& folder) override;
};

}  // namespace platform
