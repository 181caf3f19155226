#pragma once

#include "forms/win32.h"

namespace forms {

/// Keys, clicks and taps are for what their user saw: none acts on a window that came up, or on
/// what a window has turned to, after it was made.

/// Something new is about to be seen: what is pressed before this moment is not for it.
void BeginNewView();

/// Whether a message is to be dropped since it belongs to a press that was made before the current
/// view began, or for another window: the press itself, the repeat of a held key, or the second
/// press of the same key, or at the same place, within the time of a double click. In a message box
/// a second key press is let through: a box is often answered at once. What a program has posted is
/// never stray.
bool IsStray(const MSG& message, bool isForBox = false);

/// Throws away the mouse and key input that waits.
void DiscardPendingInput();

}  // namespace forms
