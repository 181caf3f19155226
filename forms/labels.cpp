#include "forms/labels.h"

#include "forms/form.h"

namespace forms {

DWORD Label::WindowStyle() const {
  const DWORD align = HasStyle(layout::kCentered) ? SS_CENTER
                      : HasStyle(layout::kRight)  ? SS_RIGHT
                                                  : SS_LEFT;
  return align | SS_NOPREFIX | (row().buddy ? SS_NOTIFY : 0);
}

// The second press of a double click is told as such, but boxes know clicks only.
void Label::OnCommand(WORD code) {
  if (code != STN_CLICKED && code != STN_DBLCLK) return;
  Control& box = form().ControlById(row().buddy);
  box.SetFocus();
  SendMessageW(box.window(), BM_CLICK, 0, 0);
}

}  // namespace forms
