#include "driver/input.h"

#include <optional>
#include <ranges>

#include "driver/await.h"

namespace driver {
namespace {

/// Clicks in the middle of a control; the press carries a time in milliseconds as `GetTickCount`
/// has it. The place goes with the click, too: a program that sees the mouse move late puts it
/// back.
void ClickAt(const Window& control, DWORD time) {
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
  ClickAt(control, GetTickCount());
}

void DoubleClickOn(const Window& control) {
  const DWORD first = GetTickCount();
  ClickAt(control, first);
  ClickAt(control, first + GetDoubleClickTime() / 4);
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
    for (const BYTE key : virtualKeys) SendKey(key, 0, GetTickCount());
    for (const BYTE key : std::views::reverse(virtualKeys))
      SendKey(key, KEYEVENTF_KEYUP, GetTickCount());
  };
  ActUntil(what, press, condition);
}

}  // namespace driver
