#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/clock.h"

/// Paces work on many blocks that runs on the program's one thread: fifty times a second, however
/// slow the disk is, the windows get to breathe. Each breath is a talk with the system that may
/// take longer than hundreds of blocks.
class Pacer {
 public:
  /// Lets messages run, and may show that `done` of `total` blocks are done; whether to go on.
  using Breath = std::function<bool(std::int32_t done, std::int32_t total)>;

  Pacer(platform::Clock& clock, Breath breath)
      : clock_(clock), breath_(std::move(breath)), last_(clock.Now()) {}

  /// Whether to go on, asked after each block.
  bool GoOn(std::int32_t done, std::int32_t total) {
    constexpr std::chrono::milliseconds kBetweenBreaths(20);
    if (clock_.Now() - last_ < kBetweenBreaths) return true;
    const bool goOn = breath_(done, total);
    last_ = clock_.Now();
    return goOn;
  }

 private:
  platform::Clock& clock_;
  Breath breath_;
  std::chrono::steady_clock::duration last_;
};
