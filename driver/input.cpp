#include "driver/input.h"

#include <vector>

#include "driver/await.h"

namespace driver {

void PressTogether(std::initializer_list<BYTE> virtualKeys) {
  const std::vector<BYTE> keys(virtualKeys);
  for (auto key = keys.begin(); key != keys.end(); ++key) keybd_event(*key, 0, 0, 0);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key)
    keybd_event(*key, 0, KEYEVENTF_KEYUP, 0);
}

void BringToFront(const Window& window) {
  Await("window in front", [&] {
    SetForegroundWindow(window.handle());
    return GetForegroundWindow() == window.handle();
  });
}

Window FocusOf(const Window& window) {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(window.handle(), nullptr), &info);
  return Window(info.hwndFocus);
}

void ClickOn(const Window& window) {
  const RECT place = window.Place();
  SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
  mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

void DragFromTo(POINT from, POINT to) {
  constexpr int kSteps = 20;
  SetCursorPos(from.x, from.y);
  mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
  for (int step = 1; step <= kSteps; ++step) {
    SetCursorPos(from.x + (to.x - from.x) * step / kSteps,
                 from.y + (to.y - from.y) * step / kSteps);
    Sleep(5);
  }
  mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

}  // namespace driver
