#pragma once

#include <string>

#include "forms/win32.h"

namespace forms {

/// Gives a control the name that a screen reader says, where neither its caption nor a label before
/// it names it. Does nothing where the system has no accessibility service.
void SetAccessibleName(HWND control, const std::string& name);
/// Takes the name away again, which Windows wants before the control goes.
void ForgetAccessibleName(HWND control);

}  // namespace forms
