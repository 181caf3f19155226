#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "driver/window.h"

namespace driver {

/// Brings a window to the front and waits until it is there.
void BringToFront(const Window& window);
/// Waits until a control has the keyboard focus; its window comes to the front for that.
void AwaitFocus(const Window& control);
/// Clicks in the middle of a control with the real mouse, at a time in milliseconds as
/// `GetTickCount` has it.
void ClickOn(const Window& control, DWORD time = GetTickCount());
/// Clicks there twice, as fast as a double click by the time that the presses carry, however long
/// the machine takes for them.
void DoubleClickOn(const Window& control);
/// Presses a key at the real keyboard, or releases it (KEYEVENTF_KEYUP), at such a time.
void SendKey(BYTE virtualKey, DWORD flags, DWORD time = GetTickCount());
/// Presses and releases a key at once, at such a time.
void TapKey(BYTE virtualKey, DWORD time);
/// Presses keys together at the real keyboard, the first one longest, with a window in front, until
/// they have their effect.
void PressUntil(const std::string& what, const Window& window, const std::vector<BYTE>& virtualKeys,
                const std::function<bool()>& condition);

}  // namespace driver
