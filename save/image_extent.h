#pragma once

#include <cstdint>

#include "capture/block_type.h"
#include "save/camera_index.h"

/// Where an image lies, in bytes from some origin.
struct Extent {
  std::int32_t begin;  ///< The image's bytes, with the tail at their end.
  std::int32_t text;   ///< Its text; the end of the image's bytes.
  std::int32_t sound;
  std::int32_t end;

  Extent From(std::int32_t origin) const {
    return {begin - origin, text - origin, sound - origin, end - origin};
  }
  /// Whether this, counted from the block's start, lies inside a block's data area and has room for
  /// an image.
  bool IsValid(const format::BlockType& type) const {
    return begin >= 0 && begin < text && end <= type.variant().trailerOffset;
  }
};

/// Where an image lies in its block.
inline Extent ExtentOf(const format::BlockType& type, const IndexedImage& image) {
  const auto byteOf = [&type](std::int32_t sector) {
    return (sector - type.variant().trailerSectors) * format::kSectorSize;
  };
  const std::int32_t sound = image.endSector - image.soundSectors;
  return {byteOf(image.startSector), byteOf(sound - image.textSectors), byteOf(sound),
          byteOf(image.endSector)};
}
