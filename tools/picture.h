#pragma once

#include <cstdint>

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

/// Draws a scene with the camera's number and the time in it.
Picture DrawPicture(int width, int height, int camera, std::int64_t seconds);

}  // namespace tools
