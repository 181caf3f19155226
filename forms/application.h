#pragma once

#include "forms/win32.h"

namespace forms {

/// Sets up what all windows need; once, first in `main`.
void StartApplication();
/// Runs until the program is told to quit; the exit code.
int RunMessageLoop();
/// Handles one message as the message loops do: stray input is dropped, then come the keys of the
/// form it belongs to, then dispatch.
void HandleMessage(MSG& message);
/// Whether the form that a message belongs to took it as one of its keys.
bool TranslateForForm(MSG& message);
/// Handles every message that waits, then comes back. A request to quit is kept for the main loop.
void DoEvents();

/// Keeps the machine from falling asleep while it lives.
class KeepAwake {
 public:
  KeepAwake();
  ~KeepAwake();
  KeepAwake(const KeepAwake&) = delete;
  KeepAwake& operator=(const KeepAwake&) = delete;
};

/// Makes the end of the Windows session wait while it lives: Windows tells the user that a
/// recording is being saved, and ends the session all the same only when the user insists. At most
/// one lives at a time.
class ShutdownBlock {
 public:
  /// `window` is any of the program's.
  explicit ShutdownBlock(HWND window);
  ~ShutdownBlock();
  ShutdownBlock(const ShutdownBlock&) = delete;
  ShutdownBlock& operator=(const ShutdownBlock&) = delete;

  /// Whether one lives.
  static bool IsUp();

 private:
  HWND window_;
};

}  // namespace forms
