#include "forms/application.h"

#include <objbase.h>

#include <cstdlib>

namespace forms {
namespace {

bool doEventsEnds = false;

/// Whether a press is the second of a double click whose first hit another window, which has made
/// way for this one meanwhile: nobody has meant this one yet.
bool IsStrayPress(const MSG& message) {
  static MSG former = {};
  if (message.message != WM_LBUTTONDOWN) return false;
  const bool stray = former.hwnd && former.hwnd != message.hwnd &&
                     message.time - former.time <= GetDoubleClickTime() &&
                     std::abs(message.pt.x - former.pt.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
                     std::abs(message.pt.y - former.pt.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
  former = message;
  if (stray) former.hwnd = nullptr;
  return stray;
}

}  // namespace

void StartApplication() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  INITCOMMONCONTROLSEX controls = {};
  controls.dwSize = sizeof controls;
  controls.dwICC = ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_UPDOWN_CLASS | ICC_DATE_CLASSES |
                   ICC_PROGRESS_CLASS | ICC_ANIMATE_CLASS | ICC_TAB_CLASSES;
  InitCommonControlsEx(&controls);
}

void HandleMessage(MSG& message) {
  if (IsStrayPress(message) || TranslateForForm(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

int RunMessageLoop() {
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) HandleMessage(message);
  return static_cast<int>(message.wParam);
}

void DoEvents() {
  doEventsEnds = false;
  MSG message;
  while (!doEventsEnds && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    HandleMessage(message);
  }
}

void EndDoEvents() {
  doEventsEnds = true;
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

KeepAwake::KeepAwake() {
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
}
KeepAwake::~KeepAwake() {
  SetThreadExecutionState(ES_CONTINUOUS);
}

}  // namespace forms
