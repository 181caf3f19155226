#pragma once

#include "forms/control.h"

namespace forms {

/// One line of text. With kReadOnly it can be selected and copied only; with kShowsEnd it shows the
/// end of a text that is too long for it and offers the whole as its tool tip.
class TextBox : public Control {
 public:
  using Control::Control;

  std::string Text() const;
  void SetText(const std::string& text);
  void SetCaption(const std::string& text) override { SetText(text); }
  /// Selects all of the text.
  void SelectAll();

 protected:
  const wchar_t* WindowClass() const override { return WC_EDITW; }
  DWORD WindowStyle() const override;
  DWORD ExtendedStyle() const override { return WS_EX_CLIENTEDGE; }
  RECT WindowPlace(RECT place) const override;
  void LaidOut() override;
  void Created() override;
  void OnCommand(WORD code) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  friend class UpDown;
  void ShowEnd();

  class UpDown* upDown_ = nullptr;  ///< Counts in this box; brings its text into range.
};

/// Two arrows that count in the text box beside them (the row's buddy). The box takes typing as
/// well: a number out of range is brought into it when the box is left or the value is read; an
/// emptied box is 0. Event: kEnter, in the box.
class UpDown : public Control {
 public:
  using Control::Control;

  /// Of the arrows and the box.
  void SetToolTip(const std::string& text) override;
  /// The value that the box shows, brought into range.
  int Value();
  void SetValue(int value);
  /// Both ends included; wraps around.
  void SetRange(int min, int max);

 protected:
  const wchar_t* WindowClass() const override { return UPDOWN_CLASSW; }
  RECT WindowPlace(RECT place) const override;
  DWORD WindowStyle() const override;
  void Created() override;

 private:
  friend class TextBox;
  void BringIntoRange();

  TextBox* box_ = nullptr;
  int min_ = 0;
  int max_ = 59;
  int value_ = 0;
};

}  // namespace forms
