#pragma once

#include <cstdint>
#include <string>

#include "capture/mdlCreate60DFile.h"
#include "save/image_extent.h"

/// An image as it lies in the read buffer, with all that belongs to it.
class StoredImage {
 public:
  /// `extent` counts from the buffer's start.
  StoredImage(const IndexedBlock& block, const IndexedImage& image, const Extent& extent);

  /// The same for the writer; refers to this object and the buffer.
  mdlCreate60DFile::NewImage AsNewImage() const;

 private:
  const IndexedImage& image_;
  Extent extent_;
  std::int32_t size_;
  std::int32_t seconds_;
  std::int32_t soundSectors_;
  std::string title_;
  std::string text_;
};
