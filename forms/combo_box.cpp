#include "forms/combo_box.h"

#include "forms/text.h"

namespace forms {

void ComboBox::AddItem(const std::string& text) {
  items_.push_back(text);
  Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

int ComboBox::ListIndex() const {
  return window() ? static_cast<int>(Send(CB_GETCURSEL)) : index_;
}

void ComboBox::SetListIndex(int index) {
  index_ = index;
  Send(CB_SETCURSEL, static_cast<WPARAM>(index));
}

std::string ComboBox::Text() const {
  const int index = ListIndex();
  return index < 0 || index >= ListCount() ? std::string()
                                           : items_[static_cast<std::size_t>(index)];
}

void ComboBox::Created() {
  for (const std::string& text : items_)
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()));
  SetListIndex(index_);
}

void ComboBox::OnCommand(WORD code) {
  if (code == CBN_SELCHANGE) Raise(Event::kClick);
}

// The window's height is that of the list when it is dropped down.
int ComboBox::WindowHeight(int pixels) const {
  constexpr int kLines = 9;
  return pixels * kLines;
}

}  // namespace forms
