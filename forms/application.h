#pragma once

#include "forms/win32.h"

namespace forms {

/// Sets up what all windows need; once, first in `main`.
void StartApplication();
/// Runs until the program is told to quit; the exit code.
int RunMessageLoop();
/// Handles one message as the message loops do: the keys of the form it belongs to, then dispatch.
/// Of a double click whose first press has put another control in the place of the one that was
/// meant, the second press is dropped.
void HandleMessage(MSG& message);
/// Whether the form that a message belongs to took it as one of its keys.
bool TranslateForForm(MSG& message);
/// Handles every message that waits, then comes back. A request to quit is kept for the main loop.
void DoEvents();
/// Makes a `DoEvents` that runs come back before it takes another message.
void EndDoEvents();
/// Throws away the mouse and key input that waits.
void DiscardPendingInput();

/// Keeps the machine from falling asleep while it lives.
class KeepAwake {
 public:
  KeepAwake();
  ~KeepAwake();
  KeepAwake(const KeepAwake&) = delete;
  KeepAwake& operator=(const KeepAwake&) = delete;
};

}  // namespace forms
