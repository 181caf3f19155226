#pragma once

#include "forms/control.h"

namespace forms {

/// Text that cannot be edited. An ampersand shows as itself. One that is part of a check box (the
/// row's buddy) is disabled with it, and a click on it is one on the box.
class Label : public Control {
 public:
  using Control::Control;

 protected:
  const wchar_t* WindowClass() const override { return WC_STATICW; }
  DWORD WindowStyle() const override;
  void OnCommand(WORD code) override;
};

/// A thin line that divides a form.
class Line : public Control {
 public:
  using Control::Control;

 protected:
  const wchar_t* WindowClass() const override { return WC_STATICW; }
  DWORD WindowStyle() const override { return SS_ETCHEDHORZ; }
};

/// A titled box around the controls that stand in it. Hidden or disabled, it hides or disables
/// them, whose own state stays as it is.
class Frame : public Control {
 public:
  using Control::Control;

 protected:
  const wchar_t* WindowClass() const override { return WC_BUTTONW; }
  DWORD WindowStyle() const override { return BS_GROUPBOX; }
};

}  // namespace forms
