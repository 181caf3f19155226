#include "forms/displays.h"

#include <algorithm>

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

void ProgressBar::SetValue(int percent) {
  percent = std::clamp(percent, 0, 100);
  if (percent == value_) return;
  value_ = percent;
  ShowValue();
}

void ProgressBar::ShowValue() {
  // The themed bar creeps up to a higher value but jumps down to a lower one at once.
  Send(PBM_SETRANGE32, 0, 101);
  Send(PBM_SETPOS, static_cast<WPARAM>(value_ + 1));
  Send(PBM_SETPOS, static_cast<WPARAM>(value_));
  Send(PBM_SETRANGE32, 0, 100);
}

void ProgressBar::Created() {
  ShowValue();
}

void Timer::SetEnabled(bool enabled) {
  Control::SetEnabled(enabled);
  Arm();
}

void Timer::Arm() {
  const HWND owner = form().window();
  if (!owner) return;
  const auto timer = static_cast<UINT_PTR>(id());
  if (Enabled() && IsWindowVisible(owner))
    SetTimer(owner, timer, static_cast<UINT>(row().interval), nullptr);
  else
    KillTimer(owner, timer);
}

void Timer::OnTimer() {
  // A tick may still wait in the queue when the timer is stopped.
  if (ticking_ || !Enabled()) return;
  ticking_ = true;
  Raise(Event::kTimer);
  ticking_ = false;
}

}  // namespace forms
