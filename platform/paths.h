#pragma once

#include <string>

namespace platform {

/// The folder of a file's path: without its last separator, but for a drive's root ("E:\\"); "."
/// for a path that names none.
inline std::string FolderOf(const std::string& path) {
  const std::size_t separator = path.find_last_of("\\/");
  if (separator == std::string::npos) return ".";
  const bool isRoot = separator == 0 || path[separator - 1] == ':';
  return path.substr(0, separator + (isRoot ? 1 : 0));
}

}  // namespace platform
