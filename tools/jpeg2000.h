#pragma once

#include <cstddef>
#include <optional>

#include "tools/bytes.h"
#include "tools/picture.h"

namespace tools {

/// Encodes a picture without loss as a bare JPEG 2000 codestream. Throws `std::runtime_error`
/// when the library fails.
Bytes EncodeJpeg2000(const Picture& picture);

/// Decodes a codestream, which may be followed by other bytes; nothing when it is none, when it
/// is damaged, or when its picture is unreasonably large.
std::optional<Picture> DecodeJpeg2000(const std::uint8_t* bytes, std::size_t count);

}  // namespace tools
