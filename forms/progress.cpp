#include "forms/progress.h"

#include <algorithm>

#include "forms/text.h"

namespace forms {

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

bool Animation::Open(const std::string& path) {
  return Send(ACM_OPENW, 0, reinterpret_cast<LPARAM>(Wide(path).c_str())) != 0;
}

void Animation::Play() {
  Send(ACM_PLAY, static_cast<WPARAM>(-1), MAKELPARAM(0, -1));
}

void Animation::Stop() {
  Send(ACM_STOP);
}

}  // namespace forms
