// Where a form and its controls stand: twips to pixels, the work area. Twips of a layout
// grow with the system's text, as dialog units do.
#include <algorithm>

#include "forms/form_state.h"

namespace forms {
namespace {

// What an outer height counts for the window's frame, twips: as Windows draws it at its usual text
// size.
constexpr int kUsualFrame = 435;

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

/// The place nearest to `at` where what has this size stands in [first, last), or begins there.
int Inside(int at, int size, int first, int last) {
  return std::clamp(at, first, std::max(first, last - size));
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

int Form::PixelsAcross(int twips) const {
  const TextScale scale = state_->fonts.Width();
  return MulDiv(twips, static_cast<int>(dpi_) * scale.real, kTwipsPerInch * scale.usual);
}

int Form::PixelsDown(int twips) const {
  const TextScale scale = state_->fonts.Height();
  return MulDiv(twips, static_cast<int>(dpi_) * scale.real, kTwipsPerInch * scale.usual);
}

SIZE Form::WantedSize() const {
  const SIZE frame = FrameSize();
  const State& state = *state_;
  const int height =
      state.outerHeight ? *state.outerHeight - kUsualFrame : state.layout.clientHeight;
  const int outerHeight =
      state.outerHeight ? MulDiv(*state.outerHeight, static_cast<int>(dpi_), kTwipsPerInch) : 0;
  return {PixelsAcross(state.layout.clientWidth) + frame.cx,
          std::max<LONG>(PixelsDown(height) + frame.cy, outerHeight)};
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
  const RECT area = WorkArea();
  SIZE size = {std::min<LONG>(wanted.cx, WidthOf(area)), std::min<LONG>(wanted.cy, HeightOf(area))};
  // A bar takes room from the content, beside it if the work area has it.
  if (size.cy < wanted.cy)
    size.cx = std::min<LONG>(size.cx + GetSystemMetricsForDpi(SM_CXVSCROLL, dpi_), WidthOf(area));
  if (size.cx < wanted.cx)
    size.cy = std::min<LONG>(size.cy + GetSystemMetricsForDpi(SM_CYHSCROLL, dpi_), HeightOf(area));
  SetWindowPos(window_, nullptr, 0, 0, size.cx, size.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  FitScrollBars();
}

void Form::PlaceControls() {
  for (Control* control : state_->inOrder) {
    if (!control->window_) continue;
    control->Send(WM_SETFONT, reinterpret_cast<WPARAM>(state_->fonts.Get(control->row_->font)),
                  TRUE);
    control->PlaceWindow();
    control->LaidOut();
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
  RECT rect = {PixelsAcross(left), PixelsDown(top), PixelsAcross(left + control.width_),
               PixelsDown(top + control.height_)};
  OffsetRect(&rect, -state_->scrolled.x, -state_->scrolled.y);
  return rect;
}

void Form::TakeDpi(UINT dpi) {
  dpi_ = dpi;
  state_->fonts.SetDpi(dpi);
  state_->toolTips.SetDpi(dpi);
}

void Form::OnDpiChanged(UINT dpi, const RECT& suggested) {
  MoveTo(suggested.left, suggested.top);
  LayOutAnew(dpi);
}

void Form::LayOutAnew(UINT dpi) {
  state_->scrolled = {};
  TakeDpi(dpi);
  FitWindow();
  PlaceControls();
}

void Form::OnTextSizeChanged() {
  LayOutAnew(dpi_);
  const RECT area = WorkArea();
  const RECT own = WindowRect(window_);
  MoveTo(Inside(own.left, WidthOf(own), area.left, area.right),
         Inside(own.top, HeightOf(own), area.top, area.bottom));
}

void Form::MoveTo(int left, int top) {
  SetWindowPos(window_, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

int Form::Top() const {
  const TextScale scale = state_->fonts.Height();
  return window_ ? MulDiv(WindowRect(window_).top, kTwipsPerInch * scale.usual,
                          static_cast<int>(dpi_) * scale.real)
                 : 0;
}

void Form::SetHeight(int twips) {
  state_->outerHeight = twips;
  if (!window_) return;
  FitWindow();
  const RECT area = WorkArea();
  const RECT own = WindowRect(window_);
  MoveTo(own.left, Inside(own.top, HeightOf(own), area.top, area.bottom));
}

void Form::MoveBy(int twips) {
  if (!window_) return;
  const RECT area = WorkArea();
  const RECT before = WindowRect(window_);
  const int lowest = area.bottom - GetSystemMetricsForDpi(SM_CYCAPTION, dpi_);
  MoveTo(before.left, std::clamp<int>(before.top + PixelsDown(twips), area.top, lowest));
}

void Form::Center() {
  const RECT own = WindowRect(window_);
  const RECT area = WorkArea();
  RECT over = area;
  if (const HWND beneath = owner_ ? owner_->VisibleWindow() : nullptr; beneath)
    over = WindowRect(beneath);
  const int left = over.left + (WidthOf(over) - WidthOf(own)) / 2;
  const int top = over.top + (HeightOf(over) - HeightOf(own)) / 2;
  MoveTo(Inside(left, WidthOf(own), area.left, area.right),
         Inside(top, HeightOf(own), area.top, area.bottom));
}

}  // namespace forms
