#include "forms/slider.h"

#include <algorithm>

#include "forms/accessible_texts.h"
#include "forms/form.h"

namespace forms {
namespace {

TTTOOLINFOW TrackedTool(HWND slider) {
  TTTOOLINFOW tool = {};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = slider;
  return tool;
}

}  // namespace

void Slider::SetValue(std::int32_t value) {
  value = std::clamp(value, min_, std::max(min_, max_));
  Send(TBM_SETPOS, TRUE, value);
  ChangeTo(value);
}

void Slider::SetMax(std::int32_t max) {
  SetRange(min_, max);
}

void Slider::SetRange(std::int32_t min, std::int32_t max) {
  constexpr std::int32_t kPagesInRange = 20;
  min_ = min;
  max_ = max;
  Send(TBM_SETRANGEMIN, FALSE, min);
  Send(TBM_SETRANGEMAX, TRUE, max);
  Send(TBM_SETPAGESIZE, 0, std::max(1, (max - min) / kPagesInRange));
  SetValue(value_);
}

void Slider::ChangeTo(std::int32_t value) {
  if (value == value_) return;
  value_ = value;
  Raise(Event::kChange);
}

// As if the button were let go where the thumb is: to take the capture away is not enough, since
// Wine's slider goes on following the mouse.
void Slider::EndDrag() {
  if (!window() || GetCapture() != window()) return;
  RECT thumb = {};
  Send(TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
  Send(WM_LBUTTONUP, 0, MAKELPARAM((thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2));
  if (GetCapture() == window()) ReleaseCapture();
}

void Slider::Created() {
  // The slider's own tip would show a bare number.
  tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX, 0, 0, 0,
                         0, form().window(), nullptr, GetModuleHandleW(nullptr), nullptr);
  TTTOOLINFOW tool = TrackedTool(window());
  SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  Send(TBM_SETLINESIZE, 0, 1);
  SetRange(min_, max_);
  Send(TBM_SETPOS, TRUE, value_);
}

void Slider::Destroying() {
  tip_ = nullptr;
}

void Slider::SetToolTip(const std::string& text) {
  Control::SetToolTip(text);
  if (!tip_) return;
  SetAccessibleValue(window(), text);
  std::wstring wide = Wide(text);
  TTTOOLINFOW tool = TrackedTool(window());
  tool.lpszText = wide.data();
  SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void Slider::ShowTip() {
  SetRestingToolTip(false);
  RECT thumb = {};
  Send(TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
  POINT place = {thumb.left, thumb.bottom};
  ClientToScreen(window(), &place);
  TTTOOLINFOW tool = TrackedTool(window());
  SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(place.x, place.y));
  SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void Slider::HideTip() {
  SetRestingToolTip(true);
  TTTOOLINFOW tool = TrackedTool(window());
  SendMessageW(tip_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

// The message carries 16 bits of the position at most, and none for keys: the control is asked.
void Slider::OnScroll(WORD code) {
  const auto position = static_cast<std::int32_t>(Send(TBM_GETPOS));
  if (position != value_) {
    value_ = position;
    Raise(Event::kScroll);
    // A handler that refused the move has set another value, which was told as a change already.
    if (value_ == position) Raise(Event::kChange);
  }
  if (code == TB_THUMBTRACK && GetCapture() == window()) ShowTip();
}

std::optional<LRESULT> Slider::OnMessage(UINT message, WPARAM, LPARAM) {
  if (message == WM_CAPTURECHANGED) HideTip();
  return {};
}

}  // namespace forms
