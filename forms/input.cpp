#include "forms/input.h"

#include <cstdlib>

namespace forms {
namespace {

/// A press of a key or of the mouse.
struct Press {
  WPARAM key = 0;  ///< Virtual key; 0 for the mouse.
  HWND window = nullptr;
  int view = 0;
  DWORD time = 0;  ///< Milliseconds; of the release, once that has come.
  POINT at = {};
};

constexpr LPARAM kIsRepeat = 1 << 30;

int currentView = 0;
DWORD viewBegan = 0;
Press lastKey;
Press lastClick;

/// Whether a message comes from a keyboard, mouse, pen or finger, or from a program that stands for
/// one, and was not just posted.
bool IsFromDevice() {
  INPUT_MESSAGE_SOURCE source = {};
  return GetCurrentInputMessageSource(&source) && source.originId != IMO_UNAVAILABLE;
}

bool IsBeforeView(const Press& press) {
  return static_cast<LONG>(press.time - viewBegan) < 0;
}

bool IsWithinDoubleClick(const Press& former, const Press& press) {
  return press.time - former.time <= GetDoubleClickTime() &&
         std::abs(press.at.x - former.at.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
         std::abs(press.at.y - former.at.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
}

/// Takes note of a press; of a stray one only when it was, so that a third one is stray, too.
bool NoteUnlessStray(Press& former, const Press& press, bool isStray) {
  if (isStray)
    former.time = press.time;
  else
    former = press;
  return isStray;
}

bool IsStrayKey(const MSG& message, bool isForBox) {
  Press press = {message.wParam, GetAncestor(message.hwnd, GA_ROOT), currentView, message.time, {}};
  const bool goesOn =
      press.key == lastKey.key && (press.window != lastKey.window || press.view != lastKey.view);
  if (message.lParam & kIsRepeat) return goesOn;
  const bool isSecond = goesOn && !isForBox && IsWithinDoubleClick(lastKey, press);
  return NoteUnlessStray(lastKey, press, isSecond || IsBeforeView(press));
}

bool IsStrayClick(const MSG& message) {
  const Press press = {0, message.hwnd, currentView, message.time, message.pt};
  const bool goesOn =
      lastClick.window && (press.window != lastClick.window || press.view != lastClick.view);
  const bool isSecond = goesOn && IsWithinDoubleClick(lastClick, press);
  return NoteUnlessStray(lastClick, press, isSecond || IsBeforeView(press));
}

}  // namespace

void BeginNewView() {
  ++currentView;
  viewBegan = GetTickCount();
}

bool IsStray(const MSG& message, bool isForBox) {
  switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      return IsFromDevice() && IsStrayKey(message, isForBox);
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
      return IsFromDevice() && IsStrayClick(message);
    case WM_KEYUP:
    case WM_SYSKEYUP:
      if (message.wParam == lastKey.key) lastKey.time = message.time;
      return false;
    case WM_LBUTTONUP:
    case WM_NCLBUTTONUP:
      lastClick.time = message.time;
      return false;
    default:
      return false;
  }
}

void DiscardPendingInput() {
  constexpr struct {
    UINT first, last;
  } kInput[] = {{WM_KEYFIRST, WM_KEYLAST},
                {WM_MOUSEFIRST, WM_MOUSELAST},
                {WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK}};
  MSG message;
  for (const auto& [first, last] : kInput)
    while (PeekMessageW(&message, nullptr, first, last, PM_REMOVE)) {
    }
}

}  // namespace forms
