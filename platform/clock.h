#pragma once

#include <chrono>

namespace platform {

/// Time that passes: for waiting, and for telling how long something took.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Time since some fixed moment; never runs backwards, whatever the user does to the system's
  /// date.
  virtual std::chrono::steady_clock::duration Now() = 0;
  /// Halts the program, its windows too, for at least this long.
  virtual void Sleep(std::chrono::milliseconds time) = 0;
};

}  // namespace platform
