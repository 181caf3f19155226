#include "forms/up_down.h"

#include <algorithm>
#include <charconv>

#include "forms/form.h"
#include "forms/text_box.h"

namespace forms {

int UpDown::Value() {
  BringIntoRange();
  return value_;
}

void UpDown::SetValue(int value) {
  value_ = std::clamp(value, min_, max_);
  Send(UDM_SETPOS32, 0, value_);
  if (box_) box_->SetText(std::to_string(value_));
}

void UpDown::SetRange(int min, int max) {
  min_ = min;
  max_ = max;
  Send(UDM_SETRANGE32, static_cast<WPARAM>(min), max);
  SetValue(value_);
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

// An arrow counts on from what was typed, once the control has read it from the box.
void UpDown::OnScroll(WORD code) {
  if (code == SB_THUMBPOSITION) Raise(Event::kChange);
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
