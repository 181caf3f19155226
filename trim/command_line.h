#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "save/time_range.h"

namespace trim {

/// What a command line asks for.
struct Request {
  std::string source;
  std::string target;
  std::optional<std::int64_t> from;  ///< Seconds since 1960, as a capture time stamp counts.
  std::optional<std::int64_t> to;
  bool clip = false;                     ///< Times beyond the recording are its ends.
  std::optional<BlockRange> blocks;      ///< Instead of times.
  std::optional<std::uint32_t> cameras;  ///< Bit i is camera i + 1; none: all of them.
  bool replace = false;                  ///< A file that has the target's name may go.
};

/// Reads a command line. None when it asked for a help or the version, which were printed. Wrong
/// use is a `Refusal`.
std::optional<Request> ReadCommandLine(int argc, char** argv);

}  // namespace trim
