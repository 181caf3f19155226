#include "forms/labels.h"

namespace forms {

DWORD Label::WindowStyle() const {
  const DWORD align = HasStyle(layout::kCentered) ? SS_CENTER
                      : HasStyle(layout::kRight)  ? SS_RIGHT
                                                  : SS_LEFT;
  return align | SS_NOPREFIX;
}

}  // namespace forms
