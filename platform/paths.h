#pragma once

#include <string>

/// Taking paths of Windows apart and putting them together. Its separator is the backslash; a
/// slash, which it takes as well, ends a folder's name too.
namespace platform {

/// The folder of a file's path: without its last separator, but for a drive's root ("E:\\"); "."
/// for a path that names none, "E:." for one that names its drive alone.
inline std::string FolderOf(const std::string& path) {
  const std::size_t separator = path.find_last_of("\\/");
  if (separator == std::string::npos) return (path.find(':') == 1 ? path.substr(0, 2) : "") + ".";
  const bool isRoot = separator == 0 || path[separator - 1] == ':';
  return path.substr(0, separator + (isRoot ? 1 : 0));
}

/// The path of an entry of a folder, which may end in a backslash.
inline std::string PathIn(const std::string& folder, const std::string& name) {
  return folder.empty() || folder.back() != '\\' ? folder + "\\" + name : folder + name;
}

/// A path without the backslashes that it ends in.
inline std::string WithoutEnd(std::string path) {
  while (!path.empty() && path.back() == '\\') path.pop_back();
  return path;
}

/// A path's last piece: what stands behind its last backslash, the whole text when it has none.
inline std::string LastFilePart(const std::string& fFilePath) {
  return fFilePath.substr(fFilePath.rfind('\\') + 1);  // Without one: npos + 1 is 0.
}

}  // namespace platform
