#include "driver/input.h"

#include <ranges>

#include "driver/await.h"

namespace driver {
void BringToFront(const Window& window) {
  Await("window in front", [&] {
    SetForegroundWindow(window.handle());
    return GetForegroundWindow() == window.handle();
  });
}

void AwaitFocus(const Window& control) {
  const HWND window = GetAncestor(control.handle(), GA_ROOT);
  Await("focus", [&] {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    if (!info.hwndFocus) SetForegroundWindow(window);
    return info.hwndFocus == control.handle();
  });
}

// The place goes with the click, too: a program that sees the mouse move late puts it back.
void ClickOn(const Window& control, DWORD time) {
  constexpr int kWholeScreen = 65'536;
  const RECT place = control.Place();
  const int x = (place.left + place.right) / 2;
  const int y = (place.top + place.bottom) / 2;
  SetCursorPos(x, y);
  INPUT inputs[2] = {};
  for (INPUT& input : inputs) {
    input.type = INPUT_MOUSE;
    input.mi.dx = MulDiv(x, kWholeScreen, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = MulDiv(y, kWholeScreen, GetSystemMetrics(SM_CYSCREEN));
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE;
    input.mi.time = time;
  }
  inputs[0].mi.dwFlags |= MOUSEEVENTF_LEFTDOWN;
  inputs[1].mi.dwFlags |= MOUSEEVENTF_LEFTUP;
  SendInput(2, inputs, sizeof inputs[0]);
}

void DoubleClickOn(const Window& control) {
  const DWORD first = GetTickCount();
  ClickOn(control, first);
  ClickOn(control, first + GetDoubleClickTime() / 4);
}

void SendKey(BYTE virtualKey, DWORD flags, DWORD time) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtualKey;
  input.ki.dwFlags = flags;
  input.ki.time = time;
  SendInput(1, &input, sizeof input);
}

void TapKey(BYTE virtualKey, DWORD time) {
  SendKey(virtualKey, 0, time);
  SendKey(virtualKey, KEYEVENTF_KEYUP, time);
}

void PressUntil(const std::string& what, const Window& window, const std::vector<BYTE>& virtualKeys,
                const std::function<bool()>& condition) {
  BringToFront(window);
  const auto press = [&] {
    SetForegroundWindow(window.handle());
    for (const BYTE key : virtualKeys) SendKey(key, 0);
    for (const BYTE key : std::views::reverse(virtualKeys)) SendKey(key, KEYEVENTF_KEYUP);
  };
  ActUntil(what, press, condition);
}

}  // namespace driver
