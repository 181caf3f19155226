#pragma once

#include <cstdint>
#include <string>

#include "storage/pacer.h"

/// What a save operation shows while it runs, and whom it asks whether to go on. The windows that
/// run saves implement it, each with its own percentages.
class SaveProgress {
 public:
  virtual ~SaveProgress() = default;

  /// Shows that `done` of `total` blocks are saved.
  virtual void ShowBlocksDone(std::int32_t done, std::int32_t total) = 0;
  /// Shows a message about a block and waits until it is answered.
  virtual void ShowBlockMessage(const std::string& text) = 0;
  /// Shows the hourglass, or the usual pointer again.
  virtual void ShowHourglass(bool on) = 0;
  /// Lets the messages that wait for the program's windows be handled; whether to go on. False once
  /// the user has cancelled.
  virtual bool GoOn() = 0;
};

/// Paces the work of a save that is asked for at `progress`.
inline Pacer PacerOf(SaveProgress& progress, platform::Clock& clock) {
  return Pacer(clock, [&progress](std::int32_t, std::int32_t) { return progress.GoOn(); });
}
