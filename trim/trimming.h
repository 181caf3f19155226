#pragma once

#include <string>

#include "trim/command_line.h"
#include "trim/outcome.h"
#include "trim/system.h"

namespace trim {

/// What was saved.
struct Saved {
  Outcome outcome = Outcome::kSaved;
  std::string report;  ///< In one line.
};

/// Saves what a request asks for. A `Refusal` says why nothing was saved.
Saved Trim(const System& system, const Request& request);

}  // namespace trim
