#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "driver/program.h"

namespace driver {

/// What a process holds of the system, by name: kernel "handles", "drawing objects", "windows" with
/// their controls, hidden ones too, and "KB" of memory of its own.
std::map<std::string, std::int64_t> HoldingsOf(const Program& program);

}  // namespace driver
