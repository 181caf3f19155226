#pragma once

#include <windows.h>

#include <initializer_list>

#include "driver/window.h"

namespace driver {

/// Presses keys together at the real keyboard, the first one longest, in the window in front.
void PressTogether(std::initializer_list<BYTE> virtualKeys);
/// Brings a window to the front and waits until it is there.
void BringToFront(const Window& window);
/// The control that has the keyboard focus in a window's thread.
Window FocusOf(const Window& window);
/// Clicks in the middle of a window with the real mouse.
void ClickOn(const Window& window);
/// Drags what is at a point of the screen to another point, in small steps.
void DragFromTo(POINT from, POINT to);

}  // namespace driver
