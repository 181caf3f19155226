#pragma once

#include <string>

#include "forms/win32.h"

namespace forms {

// What a screen reader says of a control. All do nothing where the system has no accessibility
// service.

/// Gives a control its name, where neither its caption nor a label before it names it.
void SetAccessibleName(HWND control, const std::string& name);
/// Gives a control the text of its value, where a bare number would tell nothing, and tells whoever
/// listens that it is another one.
void SetAccessibleValue(HWND control, const std::string& value);
/// Takes these texts away again, which Windows wants before the control goes.
void ForgetAccessibleTexts(HWND control);

}  // namespace forms
