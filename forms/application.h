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

}  // namespace forms
