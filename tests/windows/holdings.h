#pragma once

#include <cstdint>

#include "driver/program.h"

namespace driver {

/// What a process holds of the system.
struct Holdings {
  std::int64_t handles = 0;    ///< Kernel handles.
  std::int64_t drawing = 0;    ///< GDI objects.
  std::int64_t windows = 0;    ///< Windows and controls, hidden ones too.
  std::int64_t kilobytes = 0;  ///< Memory of its own.
};

Holdings HoldingsOf(const Program& program);

}  // namespace driver
