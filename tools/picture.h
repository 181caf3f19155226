#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/bytes.h"

namespace tools {

/// A picture in shades of grey, row by row.
struct Picture {
  int width = 0;
  int height = 0;
  Bytes pixels;
};

/// The smallest picture that has room for what is drawn.
inline constexpr int kLeastWidth = 96;
inline constexpr int kLeastHeight = 64;

/// What a picture says of itself.
struct PictureLabel {
  int camera;        ///< From 1 on.
  std::string time;  ///< As `TimeText` gives it.
};

/// Draws a scene with the camera's number and the time in it.
Picture DrawPicture(int width, int height, int camera, std::int64_t seconds);

/// Reads back what `DrawPicture` wrote; nothing when it cannot be read.
std::optional<PictureLabel> ReadLabel(const Picture& picture);

}  // namespace tools
