#pragma once

#include <string>
#include <string_view>

namespace platform {

/// UTF-8 as UTF-16. A byte that is no UTF-8 becomes U+FFFD.
std::wstring Wide(std::string_view text);
/// UTF-16 as UTF-8.
std::string Utf8(std::wstring_view text);

}  // namespace platform
