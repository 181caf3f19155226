#pragma once

#include "platform/windows/win32.h"
// After windows.h, which they need.
#include <commctrl.h>
#include <shellapi.h>

#include "platform/windows/text.h"

namespace forms {

using platform::Utf8;
using platform::Wide;

}  // namespace forms
