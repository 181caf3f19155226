#pragma once

#include <string>

/// The UTF-16 units of a UTF-8 text; each byte that belongs to no character gives one U+FFFD.
std::u16string Utf16Of(const std::string& text);

/// UTF-8 of UTF-16 units; half of a surrogate pair gives U+FFFD.
std::string Utf8Of(const std::u16string& units);
