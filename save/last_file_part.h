#pragma once

#include <string>

/// A path's last piece: what stands behind its last backslash, the whole text when it has none.
inline std::string LastFilePart(const std::string& fFilePath) {
  return fFilePath.substr(fFilePath.rfind('\\') + 1);  // Without one: npos + 1 is 0.
}
