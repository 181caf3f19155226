#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "tools/bytes.h"

namespace tools {

/// An image of opaque bytes begins with a header by which it is known again: magic, then five
/// 4-byte fields: camera from 1 on, time stamp, number within the recording, length of the whole
/// image, checksum of what follows the header. The rest is pseudo-random.
inline constexpr int kPayloadHeaderBytes = 28;

/// Such an image of `length` bytes, never ending in a zero; without the header when it is too
/// short for one.
Bytes MakePayload(int camera, std::int64_t seconds, std::uint32_t number, int length,
                  std::uint64_t seed);

/// What an image says of itself.
struct Content {
  int camera;           ///< From 1 on.
  std::string time;     ///< As `TimeText` gives it.
  std::string trouble;  ///< What is wrong with the image's bytes; empty when nothing is.
};

/// Reads the header of an image of opaque bytes or, where there is none, the picture. Nothing
/// when the image is neither.
std::optional<Content> ReadContent(const std::uint8_t* bytes, std::size_t count);

/// JPEG 2000 pictures that show camera and time, one for each camera and second.
class PictureAlbum {
 public:
  PictureAlbum(int width, int height) : width_(width), height_(height) {}

  /// The encoded picture. Cameras count from 1.
  const Bytes& Get(int camera, std::int64_t seconds);

 private:
  int width_;
  int height_;
  std::map<std::pair<std::int64_t, int>, Bytes> pictures_;
};

}  // namespace tools
