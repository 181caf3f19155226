#pragma once

#include <vector>

#include "forms/control.h"

namespace forms {

/// A list that drops down and takes no typing. Event: kClick when the user chose.
class ComboBox : public Control {
 public:
  using Control::Control;

  void AddItem(const std::string& text);
  int ListCount() const { return static_cast<int>(items_.size()); }
  /// Index of the chosen item from 0, -1 for none.
  int ListIndex() const;
  void SetListIndex(int index);
  /// The chosen item's text; empty for none.
  std::string Text() const;

 protected:
  const wchar_t* WindowClass() const override { return WC_COMBOBOXW; }
  DWORD WindowStyle() const override { return CBS_DROPDOWNLIST | WS_VSCROLL; }
  void Created() override;
  int WindowHeight(int pixels) const override;
  void OnCommand(WORD code) override;

 private:
  std::vector<std::string> items_;
  int index_ = -1;
};

}  // namespace forms
