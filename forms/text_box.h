#pragma once

#include "forms/control.h"

namespace forms {

/// One line of text. With kReadOnly it can be selected and copied only; with kShowsEnd it shows the
/// end of a text that is too long for it and offers the whole as its tool tip.
/// Events: kChange (the user's edits only), kEnter.
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
  void LaidOut() override;
  void Created() override;
  void OnCommand(WORD code) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  friend class UpDown;
  void ShowEnd();

  class UpDown* upDown_ = nullptr;  ///< Counts in this box; brings its text into range.
  bool setting_ = false;            ///< The program itself sets the text just now.
};

}  // namespace forms
