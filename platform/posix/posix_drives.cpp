#include "platform/posix/posix_drives.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

bool PosixDrives::HasFile(const std::string& path) {
  std::error_code error;
  return fs::exists(path, error) && !HasFolder(path);
}

bool PosixDrives::HasFolder(const std::string& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

std::optional<std::uint64_t> PosixDrives::FileBytes(const std::string& path) {
  std::error_code error;
  const std::uintmax_t bytes = fs::file_size(path, error);
  if (error) return {};
  return bytes;
}

bool PosixDrives::MakeFolder(const std::string& path) {
  std::error_code error;
  return fs::create_directory(path, error);
}

bool PosixDrives::RemoveFolder(const std::string& path) {
  std::error_code error;
  return fs::remove_all(path, error) > 0 && !error;
}

bool PosixDrives::RemoveFilesIn(const std::string& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error))
    if (!entry->is_directory(error) && !fs::remove(entry->path(), error)) return false;
  return !error;
}

std::vector<std::string> PosixDrives::FilesBelow(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code error;
  for (fs::recursive_directory_iterator entry(folder, error);
       !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
    if (!entry->is_directory(error)) files.push_back(entry->path());
  return files;
}
