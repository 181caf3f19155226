#pragma once

#include <string>

#include "tools/picture.h"

namespace tools {

/// Encodes a picture without loss as a bare JPEG 2000 codestream. Throws `std::runtime_error`
/// when the library fails.
std::string EncodeJpeg2000(const Picture& picture);

}  // namespace tools
