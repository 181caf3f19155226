#pragma once

#include "platform/clock.h"

/// A clock that stands still but for what is slept and, when a test says so, for each look at it.
class FakeClock : public platform::Clock {
 public:
  using Duration = std::chrono::steady_clock::duration;

  /// How much later each look at the clock is than the one before.
  Duration step = Duration::zero();
  /// What the next look answers; a test may set it on.
  Duration now = Duration::zero();

  Duration Now() override {
    const Duration shown = now;
    now += step;
    return shown;
  }
  void Sleep(std::chrono::milliseconds time) override { now += time; }
};
