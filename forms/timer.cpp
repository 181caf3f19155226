#include "forms/timer.h"

#include "forms/form.h"

namespace forms {

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
