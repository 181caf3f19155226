#include "driver/input.h"

#include <optional>
#include <vector>

#include "driver/await.h"

namespace driver {
namespace {

/// Presses keys at the real keyboard, the first one longest.
void PressTogether(std::initializer_list<BYTE> virtualKeys) {
  const std::vector<BYTE> keys(virtualKeys);
  for (auto key = keys.begin(); key != keys.end(); ++key) keybd_event(*key, 0, 0, 0);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key)
    keybd_event(*key, 0, KEYEVENTF_KEYUP, 0);
}

/// Clicks at the mouse's place; the press carries a time in milliseconds as `GetTickCount` has it.
void ClickAt(DWORD time) {
  INPUT inputs[2] = {};
  for (INPUT& input : inputs) {
    input.type = INPUT_MOUSE;
    input.mi.time = time;
  }
  inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
  inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
  SendInput(2, inputs, sizeof inputs[0]);
}

void MoveMouseTo(const Window& control) {
  const RECT place = control.Place();
  SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

}  // namespace

void BringToFront(const Window& window) {
  Await("window in front", [&] {
    SetForegroundWindow(window.handle());
    return GetForegroundWindow() == window.handle();
  });
}

Window FocusOf(const Window& window) {
  return Window(*Await("focus", [&]() -> std::optional<HWND> {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window.handle(), nullptr), &info);
    if (info.hwndFocus) return info.hwndFocus;
    SetForegroundWindow(window.handle());
    return {};
  }));
}

void AwaitFocus(const Window& window, const Window& control) {
  Await("focus", [&] { return FocusOf(window).handle() == control.handle(); });
}

void ClickOn(const Window& control) {
  MoveMouseTo(control);
  ClickAt(GetTickCount());
}

void DoubleClickOn(const Window& control) {
  MoveMouseTo(control);
  const DWORD first = GetTickCount();
  ClickAt(first);
  ClickAt(first + GetDoubleClickTime() / 4);
}

void PressUntil(const std::string& what, const Window& window,
                std::initializer_list<BYTE> virtualKeys, const std::function<bool()>& condition) {
  BringToFront(window);
  const auto press = [&] {
    SetForegroundWindow(window.handle());
    PressTogether(virtualKeys);
  };
  ActUntil(what, press, condition);
}

}  // namespace driver
