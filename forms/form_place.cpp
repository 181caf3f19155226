#include "forms/form_place.h"

#include <algorithm>

namespace forms {
namespace {

// What an outer height counts for the window's frame, twips: as Windows draws it at its usual text
// size.
constexpr int kUsualFrame = 435;
constexpr int kTwipsPerNotch = 900;  // What a notch of the mouse's wheel scrolls by.

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

RECT ClientRect(HWND window) {
  RECT rect = {};
  GetClientRect(window, &rect);
  return rect;
}

/// The place nearest to `at` where what has this size stands in [first, last), or begins there.
int Inside(int at, int size, int first, int last) {
  return std::clamp(at, first, std::max(first, last - size));
}

/// The scroll position from which [first, last) of the content is seen, the nearest to `at`.
int PositionToSee(int first, int last, int at, int page) {
  if (last > at + page) at = last - page;
  return std::min(at, first);
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

/// Where a scroll bar is to stand after this scroll code.
int PositionAfter(const SCROLLINFO& bar, WORD code, int line) {
  switch (code) {
    case SB_LINEUP:
      return bar.nPos - line;
    case SB_LINEDOWN:
      return bar.nPos + line;
    case SB_PAGEUP:
      return bar.nPos - static_cast<int>(bar.nPage);
    case SB_PAGEDOWN:
      return bar.nPos + static_cast<int>(bar.nPage);
    case SB_THUMBTRACK:
      return bar.nTrackPos;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return bar.nMax;
    default:
      return bar.nPos;
  }
}

}  // namespace

void FormPlace::SetDpi(UINT dpi) {
  dpi_ = dpi;
  fonts_.SetDpi(dpi);
  scrolled_ = {};
}

int FormPlace::PixelsAcross(int twips) const {
  const TextScale scale = fonts_.Across();
  return MulDiv(twips, static_cast<int>(dpi_) * scale.real, kTwipsPerInch * scale.usual);
}

int FormPlace::PixelsDown(int twips) const {
  const TextScale scale = fonts_.Down();
  return MulDiv(twips, static_cast<int>(dpi_) * scale.real, kTwipsPerInch * scale.usual);
}

RECT FormPlace::PixelRect(int left, int top, int width, int height) const {
  // Edges are rounded, not sizes, so that what touches in twips touches in pixels.
  RECT rect = {PixelsAcross(left), PixelsDown(top), PixelsAcross(left + width),
               PixelsDown(top + height)};
  OffsetRect(&rect, -scrolled_.x, -scrolled_.y);
  return rect;
}

SIZE FormPlace::FrameSize() const {
  RECT frame = {};
  AdjustWindowRectExForDpi(&frame,
                           static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)) &
                               ~static_cast<DWORD>(WS_HSCROLL | WS_VSCROLL),
                           FALSE, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)),
                           dpi_);
  return {WidthOf(frame), HeightOf(frame)};
}

SIZE FormPlace::ContentSize() const {
  SIZE size = {PixelsAcross(layout_.clientWidth), PixelsDown(layout_.clientHeight)};
  if (outerHeight_)
    size.cy = std::max<LONG>(
        PixelsDown(*outerHeight_ - kUsualFrame),
        MulDiv(*outerHeight_, static_cast<int>(dpi_), kTwipsPerInch) - FrameSize().cy);
  return size;
}

RECT FormPlace::WorkArea() const {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(window_, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

SIZE FormPlace::FittingSize() const {
  const SIZE content = ContentSize();
  const SIZE frame = FrameSize();
  const SIZE wanted = {content.cx + frame.cx, content.cy + frame.cy};
  const RECT area = WorkArea();
  SIZE size = {std::min<LONG>(wanted.cx, WidthOf(area)), std::min<LONG>(wanted.cy, HeightOf(area))};
  // A bar takes room from the content, beside it if the work area has it.
  if (size.cy < wanted.cy)
    size.cx = std::min<LONG>(size.cx + GetSystemMetricsForDpi(SM_CXVSCROLL, dpi_), WidthOf(area));
  if (size.cx < wanted.cx)
    size.cy = std::min<LONG>(size.cy + GetSystemMetricsForDpi(SM_CYHSCROLL, dpi_), HeightOf(area));
  return size;
}

void FormPlace::Fit() {
  if (!window_) return;
  const SIZE size = FittingSize();
  SetWindowPos(window_, nullptr, 0, 0, size.cx, size.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  FitScrollBars();
}

int FormPlace::Top() const {
  const TextScale scale = fonts_.Down();
  return window_ ? MulDiv(WindowRect(window_).top, kTwipsPerInch * scale.usual,
                          static_cast<int>(dpi_) * scale.real)
                 : 0;
}

void FormPlace::SetHeight(int twips, int down) {
  outerHeight_ = twips;
  if (!window_) return;
  const SIZE size = FittingSize();
  const RECT area = WorkArea();
  const RECT before = WindowRect(window_);
  const int lowest = area.bottom - GetSystemMetricsForDpi(SM_CYCAPTION, dpi_);
  const int wanted = before.top + PixelsDown(down);
  const int top = down > 0 ? std::clamp<int>(wanted, area.top, lowest)
                           : Inside(wanted, size.cy, area.top, area.bottom);
  SetWindowPos(window_, nullptr, before.left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
  FitScrollBars();
}

void FormPlace::MoveTo(int left, int top) {
  SetWindowPos(window_, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormPlace::Center(HWND over) {
  const RECT own = WindowRect(window_);
  const RECT around = over ? WindowRect(over) : WorkArea();
  MoveTo(around.left + (WidthOf(around) - WidthOf(own)) / 2,
         around.top + (HeightOf(around) - HeightOf(own)) / 2);
  MoveInside();
}

void FormPlace::StandApart() {
  wchar_t name[64] = L"";
  GetClassNameW(window_, name, static_cast<int>(std::size(name)));
  const int step = GetSystemMetricsForDpi(SM_CYCAPTION, dpi_);
  HWND other = nullptr;
  while ((other = FindWindowExW(nullptr, other, name, nullptr))) {
    const RECT own = WindowRect(window_);
    const RECT theirs = WindowRect(other);
    if (other == window_ || own.left != theirs.left || own.top != theirs.top) continue;
    MoveTo(own.left + step, own.top + step);
    other = nullptr;  // There may be one at the new place, too.
  }
  MoveInside();
}

void FormPlace::MoveInside() {
  const RECT area = WorkArea();
  const RECT own = WindowRect(window_);
  MoveTo(Inside(own.left, WidthOf(own), area.left, area.right),
         Inside(own.top, HeightOf(own), area.top, area.bottom));
}

void FormPlace::FitScrollBars() {
  const SIZE content = ContentSize();
  const SIZE frame = FrameSize();
  const RECT own = WindowRect(window_);
  const SIZE room = {WidthOf(own) - frame.cx, HeightOf(own) - frame.cy};
  // The client area says nothing: of the bars that take from it now each may be there only since
  // the other is.
  const int barWidth = GetSystemMetricsForDpi(SM_CXVSCROLL, dpi_);
  const int barHeight = GetSystemMetricsForDpi(SM_CYHSCROLL, dpi_);
  const bool isTooHigh = content.cy > room.cy;
  const bool isTooWide = content.cx > room.cx - (isTooHigh ? barWidth : 0);
  const int height = room.cy - (isTooWide ? barHeight : 0);
  const int width = room.cx - (content.cy > height ? barWidth : 0);
  SetScroll(window_, SB_VERT, content.cy, height, scrolled_.y);
  SetScroll(window_, SB_HORZ, content.cx, width, scrolled_.x);
  ScrollTo(scrolled_.x, scrolled_.y);
}

void FormPlace::ScrollTo(int x, int y) {
  const SIZE content = ContentSize();
  const RECT client = ClientRect(window_);
  x = std::clamp<int>(x, 0, std::max<int>(0, content.cx - client.right));
  y = std::clamp<int>(y, 0, std::max<int>(0, content.cy - client.bottom));
  const POINT before = scrolled_;
  if (x == before.x && y == before.y) return;
  scrolled_ = {x, y};
  SetScrollPos(window_, SB_HORZ, x, TRUE);
  SetScrollPos(window_, SB_VERT, y, TRUE);
  ScrollWindowEx(window_, before.x - x, before.y - y, nullptr, nullptr, nullptr, nullptr,
                 SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
}

void FormPlace::ScrollIntoView(RECT place) {
  const RECT client = ClientRect(window_);
  const int margin = PixelsDown(kTwipsPerInch / 12);
  InflateRect(&place, margin, margin);
  OffsetRect(&place, scrolled_.x, scrolled_.y);
  ScrollTo(PositionToSee(place.left, place.right, scrolled_.x, client.right),
           PositionToSee(place.top, place.bottom, scrolled_.y, client.bottom));
}

void FormPlace::OnScrollBar(bool vertical, WORD code) {
  SCROLLINFO bar = {};
  bar.cbSize = sizeof bar;
  bar.fMask = SIF_ALL;
  GetScrollInfo(window_, vertical ? SB_VERT : SB_HORZ, &bar);
  const int at = PositionAfter(bar, code, PixelsDown(kTwipsPerInch / 4));
  ScrollTo(vertical ? scrolled_.x : at, vertical ? at : scrolled_.y);
}

void FormPlace::OnWheel(int delta) {
  ScrollTo(scrolled_.x, scrolled_.y - PixelsDown(MulDiv(delta, kTwipsPerNotch, WHEEL_DELTA)));
}

}  // namespace forms
