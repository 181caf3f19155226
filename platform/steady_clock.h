#pragma once

#include <thread>

#include "platform/clock.h"

namespace platform {

/// The clock of whatever system this is.
class SteadyClock : public Clock {
 public:
  std::chrono::steady_clock::duration Now() override {
    return std::chrono::steady_clock::now().time_since_epoch();
  }
  void Sleep(std::chrono::milliseconds time) override { std::this_thread::sleep_for(time); }
};

}  // namespace platform
