#include "forms/busy.h"

#include "forms/application.h"
#include "forms/input.h"

namespace forms {

Busy::Busy(Form& form) : form_(form) {
  form_.busy_ = this;
  form_.SetHourglass(true);
}

Busy::~Busy() {
  DiscardPendingInput();
  form_.busy_ = nullptr;
  form_.SetHourglass(false);
}

bool Busy::LetMessagesRun() {
  DoEvents();
  return !stopped_ && !form_.IsClosed();
}

bool Busy::Drops(const MSG& message) {
  if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) stopped_ = true;
  // Alt+F4 closes the window. A tap of Alt would open its menu, and all would stand still.
  const bool closes = message.message == WM_SYSKEYDOWN && message.wParam == VK_F4;
  const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  const bool isMouse = message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST;
  return (isKey && !closes) || isMouse;
}

}  // namespace forms
