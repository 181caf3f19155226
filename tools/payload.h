#pragma once

#include <cstdint>
#include <string>

#include "tools/recording_reader.h"

namespace tools {

/// An image begins with a header by which it is known again: magic, then five
/// 4-byte fields: camera from 1 on, time stamp, number within the recording, length of the whole
/// image, checksum of what follows the header. The rest is pseudo-random.
inline constexpr int kPayloadHeaderBytes = 28;

/// Such an image of `length` bytes, never ending in a zero; without the header when it is too
/// short for one.
std::string MakePayload(int camera, std::int64_t seconds, std::uint32_t number, int length);

/// What is wrong with such an image as it is stored: it shows another camera or time than its
/// entry's, or bytes have changed. Empty when all is well.
std::string CheckImage(const StoredBlock& block, const StoredImage& image);

}  // namespace tools
