// How a form scrolls that is too large for the work area: by its bars, the wheel, and the focus.
#include <windowsx.h>

#include <algorithm>

#include "forms/form_state.h"

namespace forms {
namespace {

constexpr int kTwipsPerNotch = 900;  // What a notch of the mouse's wheel scrolls by.

void SetScroll(HWND window, int bar, int content, int page, int at) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = content - 1;
  info.nPage = static_cast<UINT>(page);
  info.nPos = at;
  SetScrollInfo(window, bar, &info, TRUE);
}

/// The scroll position from which [first, last) of the content is seen, the nearest to `at`.
int PositionToSee(int first, int last, int at, int page) {
  if (last > at + page) at = last - page;
  return std::min(at, first);
}

}  // namespace

void Form::FitScrollBars() {
  const SIZE wanted = WantedSize();
  const SIZE frame = FrameSize();
  const SIZE content = {wanted.cx - frame.cx, wanted.cy - frame.cy};
  RECT own = {};
  GetWindowRect(window_, &own);
  const SIZE room = {own.right - own.left - frame.cx, own.bottom - own.top - frame.cy};
  // The client area says nothing: of the bars that take from it now each may be there only since
  // the other is.
  const int barWidth = GetSystemMetricsForDpi(SM_CXVSCROLL, dpi_);
  const int barHeight = GetSystemMetricsForDpi(SM_CYHSCROLL, dpi_);
  const bool isTooHigh = content.cy > room.cy;
  const bool isTooWide = content.cx > room.cx - (isTooHigh ? barWidth : 0);
  const int height = room.cy - (isTooWide ? barHeight : 0);
  const int width = room.cx - (content.cy > height ? barWidth : 0);
  SetScroll(window_, SB_VERT, content.cy, height, state_->scrolled.y);
  SetScroll(window_, SB_HORZ, content.cx, width, state_->scrolled.x);
  ScrollTo(state_->scrolled.x, state_->scrolled.y);
}

void Form::ScrollTo(int x, int y) {
  const SIZE wanted = WantedSize();
  const SIZE frame = FrameSize();
  RECT client = {};
  GetClientRect(window_, &client);
  x = std::clamp<int>(x, 0, std::max<int>(0, wanted.cx - frame.cx - client.right));
  y = std::clamp<int>(y, 0, std::max<int>(0, wanted.cy - frame.cy - client.bottom));
  const POINT before = state_->scrolled;
  if (x == before.x && y == before.y) return;
  state_->scrolled = {x, y};
  SetScrollPos(window_, SB_HORZ, x, TRUE);
  SetScrollPos(window_, SB_VERT, y, TRUE);
  ScrollWindowEx(window_, before.x - x, before.y - y, nullptr, nullptr, nullptr, nullptr,
                 SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
}

void Form::ScrollIntoView(const Control& control) {
  RECT client = {};
  GetClientRect(window_, &client);
  RECT place = PixelRect(control);
  const int margin = PixelsDown(kTwipsPerInch / 12);
  InflateRect(&place, margin, margin);
  OffsetRect(&place, state_->scrolled.x, state_->scrolled.y);
  ScrollTo(PositionToSee(place.left, place.right, state_->scrolled.x, client.right),
           PositionToSee(place.top, place.bottom, state_->scrolled.y, client.bottom));
}

void Form::OnScrollMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (lParam) {
    const auto found = state_->byId.find(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)));
    if (found != state_->byId.end()) found->second->OnScroll(LOWORD(wParam));
    return;
  }
  const bool vertical = message == WM_VSCROLL;
  SCROLLINFO bar = {};
  bar.cbSize = sizeof bar;
  bar.fMask = SIF_ALL;
  GetScrollInfo(window_, vertical ? SB_VERT : SB_HORZ, &bar);
  int at = bar.nPos;
  const int line = PixelsDown(kTwipsPerInch / 4);
  switch (LOWORD(wParam)) {
    case SB_LINEUP:
      at -= line;
      break;
    case SB_LINEDOWN:
      at += line;
      break;
    case SB_PAGEUP:
      at -= static_cast<int>(bar.nPage);
      break;
    case SB_PAGEDOWN:
      at += static_cast<int>(bar.nPage);
      break;
    case SB_THUMBTRACK:
      at = bar.nTrackPos;
      break;
    case SB_TOP:
      at = 0;
      break;
    case SB_BOTTOM:
      at = bar.nMax;
      break;
    default:
      return;
  }
  ScrollTo(vertical ? state_->scrolled.x : at, vertical ? at : state_->scrolled.y);
}

void Form::OnWheel(int delta) {
  ScrollTo(state_->scrolled.x,
           state_->scrolled.y - PixelsDown(MulDiv(delta, kTwipsPerNotch, WHEEL_DELTA)));
}

// Over a control without the focus the wheel scrolls the form, as it does beside the controls: a
// range must not move because the pointer happens to rest on a slider, nor because the focus does.
void Form::AimWheel(MSG& message) const {
  const POINT at = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
  if (GetFocus() != message.hwnd || WindowFromPoint(at) != message.hwnd) message.hwnd = window_;
}

}  // namespace forms
