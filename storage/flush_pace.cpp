#include "storage/flush_pace.h"

#include <algorithm>
#include <bit>

namespace {

constexpr FlushPace::Duration kWanted = std::chrono::milliseconds(100);
constexpr double kMostGrowth = 2;
constexpr double kSmallestSlice = 64 * 1024;
// Bounds the one long wait when a stick falls to a tenth of its speed, its own memory being full.
constexpr double kLargestSlice = 64 * 1024 * 1024;

}  // namespace

std::uint32_t FlushPace::Piece(std::uint32_t bytes) const {
  return IsSlow() ? std::min(bytes, slice_ - written_) : bytes;
}

bool FlushPace::Wrote(std::uint32_t bytes) {
  written_ += bytes;
  return written_ >= slice_;
}

void FlushPace::Flushed(Duration took) {
  const double growth = took.count() > 0
                            ? std::min(std::chrono::duration<double>(kWanted) / took, kMostGrowth)
                            : kMostGrowth;
  const double next = std::clamp(slice_ * growth, kSmallestSlice, kLargestSlice);
  // Powers of two: a slice is no odd part of a block.
  slice_ = std::bit_floor(static_cast<std::uint32_t>(next));
  written_ = 0;
}
