#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/clock.h"

/// Lets the messages that wait for the program's windows be handled; whether to go on. Once it says
/// no, the user has cancelled, or there is no time to go on.
using GoOn = std::function<bool()>;

/// Paces work on many blocks, most of it on the thread that has the windows: fifty times a second,
/// however slow the disk is, they get to breathe. Each breath is a talk with the system that may
/// take longer than hundreds of blocks.
class Pacer {
 public:
  /// What is asked whether to go on; it may show that `done` of `total` blocks are done.
  using Asked = std::function<bool(std::int32_t done, std::int32_t total)>;

  Pacer(platform::Clock& clock, Asked asked)
      : clock_(clock), asked_(std::move(asked)), last_(clock.Now()) {}

  /// Whether to go on, asked after each block.
  bool GoOn(std::int32_t done, std::int32_t total) {
    constexpr std::chrono::milliseconds kBetweenBreaths(20);
    if (clock_.Now() - last_ < kBetweenBreaths) return true;
    const bool goOn = asked_(done, total);
    last_ = clock_.Now();
    return goOn;
  }

 private:
  platform::Clock& clock_;
  Asked asked_;
  std::chrono::steady_clock::duration last_;
};
