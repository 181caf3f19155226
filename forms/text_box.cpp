#include "forms/text_box.h"

#include <algorithm>
#include <charconv>

#include "forms/form.h"

namespace forms {

std::string TextBox::Text() const {
  return WindowText();
}

void TextBox::SetText(const std::string& text) {
  Control::SetCaption(text);
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

// The system shows a line of text at the top of its box: a box that is higher than the line stands
// in the middle of its place.
RECT TextBox::WindowPlace(RECT place) const {
  constexpr int kAroundLine = 6;  // Pixels of the border and beside it.
  const int excess = (place.bottom - place.top - form().place().LineHeight() - kAroundLine) / 2;
  if (excess > 0) InflateRect(&place, 0, -excess);
  return place;
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
  if (code == EN_KILLFOCUS && upDown_) upDown_->BringIntoRange();
}

std::optional<LRESULT> TextBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!upDown_ || !upDown_->HasHandler(Event::kEnter)) return {};
  // The dialog manager gives Enter to the default button unless the box asks for the key.
  if (message == WM_GETDLGCODE && wParam == VK_RETURN)
    return DefSubclassProc(window(), message, wParam, lParam) | DLGC_WANTMESSAGE;
  if (message == WM_CHAR && wParam == VK_RETURN) return 0;  // A box of one line would beep.
  if (message != WM_KEYDOWN || wParam != VK_RETURN) return {};
  upDown_->Raise(Event::kEnter);
  return 0;
}

int UpDown::Value() {
  BringIntoRange();
  return value_;
}

void UpDown::SetValue(int value) {
  value_ = std::clamp(value, min_, max_);
  Send(UDM_SETPOS32, 0, value_);
  if (box_) box_->SetText(std::to_string(value_));
}

void UpDown::SetToolTip(const std::string& text) {
  Control::SetToolTip(text);
  if (box_) box_->SetToolTip(text);
}

void UpDown::SetRange(int min, int max) {
  min_ = min;
  max_ = max;
  Send(UDM_SETRANGE32, static_cast<WPARAM>(min), max);
  SetValue(value_);
}

// Beside its box.
RECT UpDown::WindowPlace(RECT place) const {
  return box_ ? box_->WindowPlace(place) : place;
}

DWORD UpDown::WindowStyle() const {
  return UDS_SETBUDDYINT | UDS_ARROWKEYS | UDS_NOTHOUSANDS | UDS_WRAP;
}

void UpDown::Created() {
  constexpr int kLongestNumber = 9;
  box_ = &dynamic_cast<TextBox&>(form().ControlById(row().buddy));
  box_->upDown_ = this;
  SendMessageW(box_->window(), EM_SETLIMITTEXT, kLongestNumber, 0);
  Send(UDM_SETBUDDY, reinterpret_cast<WPARAM>(box_->window()));
  SetRange(min_, max_);
}

void UpDown::BringIntoRange() {
  if (!box_ || !window()) return;
  const std::string text = box_->Text();
  int typed = 0;
  std::from_chars(text.data(), text.data() + text.size(), typed);
  value_ = std::clamp(typed, min_, max_);
  if (text != std::to_string(value_)) SetValue(value_);
}

}  // namespace forms
