#pragma once

#include <chrono>
#include <cstdint>

/// How much is written between two flushes: what the medium takes in about a tenth of a second. So
/// a percentage tells the truth on a slow stick, and nobody waits there for long; a fast disk is
/// asked seldom enough that it costs nothing.
class FlushPace {
 public:
  using Duration = std::chrono::steady_clock::duration;

  /// Whether a slice is less than what is usually written at once. While such a medium is flushed
  /// nothing else is written: the system lets a writer wait behind it.
  bool IsSlow() const { return slice_ < kUsualWrite; }
  /// How many of `bytes` bytes are to be written at once. A medium that takes a usual write in a
  /// slice gets it whole.
  std::uint32_t Piece(std::uint32_t bytes) const;
  /// Takes down that so many bytes were written; true when it is time for a flush.
  bool Wrote(std::uint32_t bytes);
  /// Takes down how long a flush of what was written since the last took.
  void Flushed(Duration took);

 private:
  static constexpr std::uint32_t kUsualWrite = 2 * 1024 * 1024;

  std::uint32_t slice_ = 512 * 1024;  // Soon found out, and a slow stick does not wait for long.
  std::uint32_t written_ = 0;
};
