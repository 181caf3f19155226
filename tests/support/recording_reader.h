#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/recording_builder.h"

/// One block of a recording of type 0x30 or 0x60, as the tools read it.
struct StoredBlock {
  std::string trailer;
  std::vector<tools::Image> images;  ///< Their bytes with the zeros that fill up to the tail.
  std::size_t dataBytes = 0;         ///< Up to the end of the last image.

  /// A field of the trailer.
  std::uint32_t Field(std::size_t offset, int width) const;
};

/// All blocks of such a recording, a compact last one included. Throws `std::out_of_range` where
/// the recording breaks its own layout.
std::vector<StoredBlock> ReadRecording(std::string_view recording, bool is20D);

/// The images of all blocks, one after the other, without the zeros behind their bytes.
std::vector<tools::Image> ImagesOf(std::string_view recording, bool is20D);
