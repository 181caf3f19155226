#pragma once

#include "platform/windows/win32.h"
// After windows.h, which it needs.
#include <commctrl.h>
#include <shellapi.h>
