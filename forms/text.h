#pragma once

#include <string>
#include <string_view>

#include "platform/windows/text.h"

namespace forms {

using platform::Utf8;
using platform::Wide;

/// Text without blanks at either end.
std::string Trimmed(std::string_view text);

}  // namespace forms
