#pragma once

#include "forms/control.h"

namespace forms {

class TextBox;

/// Two arrows that count in the text box beside them (the row's buddy). The box takes typing as
/// well: a number out of range is brought into it when the box is left or the value is read; an
/// emptied box is 0. Event: kChange, for the user's arrows.
class UpDown : public Control {
 public:
  using Control::Control;

  /// The value that the box shows, brought into range.
  int Value();
  void SetValue(int value);
  /// Both ends included; wraps around.
  void SetRange(int min, int max);

 protected:
  const wchar_t* WindowClass() const override { return UPDOWN_CLASSW; }
  DWORD WindowStyle() const override;
  void Created() override;
  void OnScroll(WORD code) override;

 private:
  friend class TextBox;
  void BringIntoRange();

  TextBox* box_ = nullptr;
  int min_ = 0;
  int max_ = 59;
  int value_ = 0;
};

}  // namespace forms
