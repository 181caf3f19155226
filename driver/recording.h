#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace driver {

/// When a block of a ".60D" recording (from 1) starts and ends, read from its trailer.
SYSTEMTIME StartOf(const std::string& path, int block);
SYSTEMTIME EndOf(const std::string& path, int block);
/// A time some seconds later, or earlier.
SYSTEMTIME Later(const SYSTEMTIME& time, std::int64_t seconds);
/// The user's short date, a blank, and the user's long time.
std::string TextOf(const SYSTEMTIME& time);
/// How the program shows the time range of some blocks.
std::string RangeText(const std::string& path, int first, int last);

}  // namespace driver
