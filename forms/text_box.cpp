#include "forms/text_box.h"

#include "forms/text.h"
#include "forms/up_down.h"

namespace forms {

std::string TextBox::Text() const {
  return WindowText();
}

void TextBox::SetText(const std::string& text) {
  setting_ = true;
  Control::SetCaption(text);
  setting_ = false;
  ShowEnd();
}

void TextBox::SelectAll() {
  Send(EM_SETSEL, 0, -1);
}

DWORD TextBox::WindowStyle() const {
  DWORD style = ES_AUTOHSCROLL;
  if (HasStyle(layout::kReadOnly)) style |= ES_READONLY;
  if (HasStyle(layout::kNumber)) style |= ES_NUMBER;
  if (HasStyle(layout::kCentered)) style |= ES_CENTER;
  if (HasStyle(layout::kRight)) style |= ES_RIGHT;
  return style;
}

void TextBox::Created() {
  ShowEnd();
}

void TextBox::LaidOut() {
  ShowEnd();
}

void TextBox::ShowEnd() {
  if (!HasStyle(layout::kShowsEnd)) return;
  const std::string text = Text();
  Send(EM_SETSEL, text.size(), static_cast<LPARAM>(text.size()));
  Send(EM_SCROLLCARET);
  SetToolTip(text);
}

void TextBox::OnCommand(WORD code) {
  if (code == EN_CHANGE && !setting_) Raise(Event::kChange);
  if (code == EN_KILLFOCUS && upDown_) upDown_->BringIntoRange();
}

std::optional<LRESULT> TextBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!HasHandler(Event::kEnter)) return {};
  // The dialog manager gives Enter to the default button unless the box asks for the key.
  if (message == WM_GETDLGCODE && wParam == VK_RETURN)
    return DefSubclassProc(window(), message, wParam, lParam) | DLGC_WANTMESSAGE;
  if (message == WM_CHAR && wParam == VK_RETURN) return 0;  // A box of one line would beep.
  if (message != WM_KEYDOWN || wParam != VK_RETURN) return {};
  Raise(Event::kEnter);
  return 0;
}

}  // namespace forms
