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

 private:
  HWND window_ = nullptr;
};

}  // namespace forms
