#pragma once

#include <vector>

#include "forms/control.h"

/// Controls that the user clicks.
namespace forms {

/// A push button. Event: kClick.
class Button : public Control {
 public:
  using Control::Control;

  /// Makes this the button that Enter presses.
  void SetDefault();

 protected:
  const wchar_t* WindowClass() const override { return WC_BUTTONW; }
  DWORD WindowStyle() const override;
  void ShowAsDefault(bool on) override;
  void OnCommand(WORD code) override;
};

/// A push button that shows an icon; its row's name is what screen readers say. Event: kClick.
class PictureButton : public Button {
 public:
  using Button::Button;
  ~PictureButton() override;

 protected:
  DWORD WindowStyle() const override;
  void LaidOut() override;
  LRESULT OnNotify(const NMHDR& header) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  /// The system shows the icon; of a disabled button it would show the outline.
  void HandIconOver(bool enabled);

  HICON icon_ = nullptr;
};

/// A box that is ticked or not. With kArrows, the arrow keys move among the boxes of its frame.
/// Event: kClick, for the user's clicks only.
class CheckBox : public Control {
 public:
  using Control::Control;

  bool Value() const;
  void SetValue(bool ticked);

 protected:
  const wchar_t* WindowClass() const override { return WC_BUTTONW; }
  DWORD WindowStyle() const override { return BS_AUTOCHECKBOX; }
  void Created() override;
  void LaidOut() override;
  void OnCommand(WORD code) override;
  LRESULT OnNotify(const NMHDR& header) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  bool value_ = false;
};

/// One of a group of choices. Event: kClick.
class OptionButton : public Control {
 public:
  using Control::Control;

  bool Value() const;
  void SetValue(bool chosen);

 protected:
  const wchar_t* WindowClass() const override { return WC_BUTTONW; }
  DWORD WindowStyle() const override { return BS_AUTORADIOBUTTON; }
  void OnCommand(WORD code) override;
};

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
  RECT WindowPlace(RECT place) const override;
  void OnCommand(WORD code) override;

 private:
  std::vector<std::string> items_;
  int index_ = -1;
};

}  // namespace forms
