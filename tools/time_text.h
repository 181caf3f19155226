#pragma once

#include <cstdint>
#include <string>

namespace tools {

/// "2021-03-04 12:34:56" for a number of seconds since 1960-01-01 00:00:00.
std::string TimeText(std::int64_t seconds);

/// The reverse; also takes a plain number of seconds, or a day without a time. Throws
/// `std::invalid_argument` for anything else.
std::int64_t ParseTime(const std::string& text);

}  // namespace tools
