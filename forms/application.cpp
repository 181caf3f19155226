#include "forms/application.h"

#include <objbase.h>

#include "forms/input.h"

namespace forms {
namespace {

/// Boxes and file dialogs have loops of their own.
LRESULT CALLBACK FilterDialogInput(int code, WPARAM wParam, LPARAM message) {
  if (code == MSGF_DIALOGBOX && IsStray(*reinterpret_cast<const MSG*>(message), true)) return TRUE;
  return CallNextHookEx(nullptr, code, wParam, message);
}

}  // namespace

void StartApplication() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  INITCOMMONCONTROLSEX controls = {};
  controls.dwSize = sizeof controls;
  controls.dwICC = ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_UPDOWN_CLASS | ICC_DATE_CLASSES |
                   ICC_PROGRESS_CLASS | ICC_ANIMATE_CLASS | ICC_TAB_CLASSES;
  InitCommonControlsEx(&controls);
  SetWindowsHookExW(WH_MSGFILTER, FilterDialogInput, nullptr, GetCurrentThreadId());
}

void HandleMessage(MSG& message) {
  if (IsStray(message) || TranslateForForm(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

int RunMessageLoop() {
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) HandleMessage(message);
  return static_cast<int>(message.wParam);
}

void DoEvents() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    HandleMessage(message);
  }
}

}  // namespace forms
