#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/bytes.h"

namespace tools {

/// An image begins with a header by which it is known again: magic, then five
/// 4-byte fields: camera from 1 on, time stamp, number within the recording, length of the whole
/// image, checksum of what follows the header. The rest is pseudo-random.
inline constexpr int kPayloadHeaderBytes = 28;

/// Such an image of `length` bytes, never ending in a zero; without the header when it is too
/// short for one.
std::string MakePayload(int camera, std::int64_t seconds, std::uint32_t number, int length);

/// What such an image says of itself.
struct Content {
  int camera;           ///< From 1 on.
  std::int64_t time;    ///< Time stamp.
  std::string trouble;  ///< What is wrong with the image's bytes; empty when nothing is.
};

/// Reads the header of such an image; nothing when there is none.
std::optional<Content> ReadPayload(const std::uint8_t* bytes, std::size_t count);

}  // namespace tools
