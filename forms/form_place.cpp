// Where a form and its controls stand: twips to pixels, the work area, scrolling.
#include <algorithm>

#include "forms/form_state.h"

namespace forms {
namespace {

int WidthOf(const RECT& rect) {
  return rect.right - rect.left;
}
int HeightOf(const RECT& rect) {
  return rect.bottom - rect.top;
}

RECT WindowRect(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return rect;
}

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

SIZE Form::FrameSize() const {
  RECT frame = {};
  AdjustWindowRectExForDpi(&frame,
                           static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)) &
                               ~static_cast<DWORD>(WS_HSCROLL | WS_VSCROLL),
                           FALSE, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)),
                           dpi_);
  return {WidthOf(frame), HeightOf(frame)};
}

SIZE Form::WantedSize() const {
  const SIZE frame = FrameSize();
  const State& state = *state_;
  return {
      state.outerWidth ? Pixels(*state.outerWidth) : Pixels(state.layout.clientWidth) + frame.cx,
      state.outerHeight ? Pixels(*state.outerHeight)
                        : Pixels(state.layout.clientHeight) + frame.cy};
}

RECT Form::WorkArea() const {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(window_, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

void Form::FitWindow() {
  if (!window_) return;
  const SIZE wanted = WantedSize();
  const SIZE frame = FrameSize();
  const RECT area = WorkArea();
  SIZE size = {std::min<LONG>(wanted.cx, WidthOf(area)), std::min<LONG>(wanted.cy, HeightOf(area))};
  // A bar takes room from the content, beside it if the work area has it.
  if (size.cy < wanted.cy)
    size.cx = std::min<LONG>(size.cx + GetSystemMetricsForDpi(SM_CXVSCROLL, dpi_), WidthOf(area));
  if (size.cx < wanted.cx)
    size.cy = std::min<LONG>(size.cy + GetSystemMetricsForDpi(SM_CYHSCROLL, dpi_), HeightOf(area));
  SetWindowPos(window_, nullptr, 0, 0, size.cx, size.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  // Twice, since showing one bar can make the other needed.
  for (int pass = 0; pass < 2; ++pass) {
    RECT client = {};
    GetClientRect(window_, &client);
    SetScroll(window_, SB_VERT, wanted.cy - frame.cy, client.bottom, state_->scrolled.y);
    SetScroll(window_, SB_HORZ, wanted.cx - frame.cx, client.right, state_->scrolled.x);
  }
  ScrollTo(state_->scrolled.x, state_->scrolled.y);
}

void Form::PlaceControls() {
  for (Control* control : state_->inOrder) {
    if (!control->window_) continue;
    control->Send(WM_SETFONT, reinterpret_cast<WPARAM>(state_->fonts.Get(control->row_->font)),
                  TRUE);
    control->PlaceWindow();
    control->LaidOut(dpi_);
  }
}

RECT Form::PixelRect(const Control& control) const {
  int left = control.left_;
  int top = control.top_;
  for (const Control* frame = control.container_; frame; frame = frame->container_) {
    left += frame->left_;
    top += frame->top_;
  }
  // Edges are rounded, not sizes, so that what touches in twips touches in pixels.
  RECT rect = {Pixels(left), Pixels(top), Pixels(left + control.width_),
               Pixels(top + control.height_)};
  OffsetRect(&rect, -state_->scrolled.x, -state_->scrolled.y);
  return rect;
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
  const int margin = Pixels(kTwipsPerInch / 12);
  InflateRect(&place, margin, margin);
  OffsetRect(&place, state_->scrolled.x, state_->scrolled.y);
  ScrollTo(PositionToSee(place.left, place.right, state_->scrolled.x, client.right),
           PositionToSee(place.top, place.bottom, state_->scrolled.y, client.bottom));
}

void Form::TakeDpi(UINT dpi) {
  dpi_ = dpi;
  state_->fonts.SetDpi(dpi);
  state_->toolTips.SetDpi(dpi);
}

void Form::OnDpiChanged(UINT dpi, const RECT& suggested) {
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  LayOutAnew(dpi);
}

void Form::LayOutAnew(UINT dpi) {
  state_->scrolled = {};
  TakeDpi(dpi);
  FitWindow();
  PlaceControls();
}

int Form::Left() const {
  return window_ ? Twips(WindowRect(window_).left) : 0;
}
int Form::Top() const {
  return window_ ? Twips(WindowRect(window_).top) : 0;
}
int Form::Width() const {
  return Twips(WantedSize().cx);
}
int Form::Height() const {
  return Twips(WantedSize().cy);
}

void Form::SetWidth(int twips) {
  state_->outerWidth = twips;
  FitWindow();
}

void Form::SetHeight(int twips) {
  state_->outerHeight = twips;
  FitWindow();
}

void Form::SetTop(int twips) {
  if (!window_) return;
  SetWindowPos(window_, nullptr, WindowRect(window_).left, Pixels(twips), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

int Form::MoveBy(int twips) {
  if (!window_) return 0;
  const RECT area = WorkArea();
  const RECT before = WindowRect(window_);
  const int lowest = area.bottom - GetSystemMetricsForDpi(SM_CYCAPTION, dpi_);
  const int top = std::clamp<int>(before.top + Pixels(twips), area.top, lowest);
  SetWindowPos(window_, nullptr, before.left, top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  return Twips(top - before.top);
}

void Form::Center() {
  const RECT own = WindowRect(window_);
  const RECT area = WorkArea();
  RECT over = area;
  if (const HWND beneath = owner_ ? owner_->VisibleWindow() : nullptr; beneath)
    over = WindowRect(beneath);
  const int left = over.left + (WidthOf(over) - WidthOf(own)) / 2;
  const int top = over.top + (HeightOf(over) - HeightOf(own)) / 2;
  SetWindowPos(
      window_, nullptr,
      std::clamp<int>(left, area.left, std::max<int>(area.left, area.right - WidthOf(own))),
      std::clamp<int>(top, area.top, std::max<int>(area.top, area.bottom - HeightOf(own))), 0, 0,
      SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace forms
