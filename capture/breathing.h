#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/clock.h"

/// Paces work on many blocks that runs on the program's one thread: every 64 blocks or every tenth
/// of a second, whichever comes first, the windows get to breathe.
class Breathing {
 public:
  /// Lets messages run, and may show that `done` of `total` blocks are done; whether to go on.
  using Breath = std::function<bool(std::int32_t done, std::int32_t total)>;

  Breathing(platform::Clock& clock, Breath breath)
      : clock_(clock), breath_(std::move(breath)), last_(clock.Now()) {}

  /// Whether to go on, asked after each block.
  bool GoOn(std::int32_t done, std::int32_t total) {
    constexpr int kBlocks = 64;
    constexpr std::chrono::milliseconds kTime(100);
    if (++blocks_ < kBlocks && clock_.Now() - last_ < kTime) return true;
    const bool goOn = breath_(done, total);
    blocks_ = 0;
    last_ = clock_.Now();
    return goOn;
  }

 private:
  platform::Clock& clock_;
  Breath breath_;
  std::chrono::steady_clock::duration last_;
  int blocks_ = 0;
};
