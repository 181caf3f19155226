#pragma once

// The one way in which this program includes the Windows headers.
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#endif
#define WIN32_LEAN_AND_MEAN
#ifndef UNICODE
#define UNICODE
#endif
#ifndef NOMINMAX  // The compiler's own headers define it as well.
#define NOMINMAX
#endif
#include <windows.h>
