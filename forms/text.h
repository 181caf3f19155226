#pragma once

#include "platform/windows/text.h"

namespace forms {

using platform::Utf8;
using platform::Wide;

}  // namespace forms
