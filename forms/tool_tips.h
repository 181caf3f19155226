#pragma once

#include <string>

#include "forms/win32.h"

namespace forms {

/// The tool tips of one form's controls: one tip window, one tool per control.
class ToolTips {
 public:
  /// Makes the tip window, which goes with its owner.
  void Create(HWND owner);
  /// The tip window is gone with its owner.
  void Forget() { window_ = nullptr; }
  /// Longer texts wrap at the same width at any DPI.
  void SetDpi(UINT dpi);
  /// Gives a control its text, or another; an empty one takes the tip away.
  void Set(HWND control, const std::string& text);
  /// The text of a control is asked for (TTN_GETDISPINFO of the control's parent) when it is to
  /// show. A disabled control gets no mouse, so that a place of the parent stands for it.
  void SetAsked(HWND control);
  /// Such a control was moved.
  void Follow(HWND control);
  /// The control that such a question is about.
  static int ControlOf(const NMTTDISPINFOW& question);

 private:
  HWND window_ = nullptr;
};

}  // namespace forms
