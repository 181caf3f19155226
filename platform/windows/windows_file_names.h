#pragma once

#include "platform/file_names.h"

namespace platform {

/// Files of Windows by name.
class WindowsFileNames : public FileNames {
 public:
  Standing LookAt(const std::string& path) override;
  bool Remove(const std::string& path) override;
  bool CopyTimes(const std::string& from, const std::string& to) override;
  std::uint64_t FreeBytes(const std::string& folder) override;
  std::uint64_t LargestFile(const std::string& folder) override;
  bool OnSameVolume(const std::string& pathA, const std::string& pathB) override;
  bool InheritPermissions(const std::string& path) override;
};

}  // namespace platform
