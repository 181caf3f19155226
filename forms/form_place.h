#pragma once

#include <optional>

#include "forms/fonts.h"
#include "resources/layout.h"

namespace forms {

inline constexpr int kTwipsPerInch = 1440;

/// Where a form's window stands and what of its layout is where in it: twips to pixels at the
/// window's DPI and in its fonts, within the work area. A window that does not fit there is made as
/// large as that is, and scrolls. Twips grow with the system's text, as dialog units do.
class FormPlace {
 public:
  explicit FormPlace(const layout::Form& layout) : layout_(layout) {}

  /// The window that is to be placed; null when it is gone.
  void SetWindow(HWND window) { window_ = window; }
  /// Dots per inch of the monitor that the window is on.
  UINT dpi() const { return dpi_; }
  /// Takes this DPI, and the system's fonts as they are now. Nothing is scrolled then.
  void SetDpi(UINT dpi);
  int LineHeight() const { return fonts_.LineHeight(); }
  HFONT FontOf(const layout::Row& row) { return fonts_.Get(row.font); }

  int PixelsAcross(int twips) const;
  int PixelsDown(int twips) const;
  /// A place of the layout, twips, as pixels of the window as it is scrolled.
  RECT PixelRect(int left, int top, int width, int height) const;

  /// Where the window begins, twips.
  int Top() const;
  /// Sets the height of the whole window with its frame and moves it down, or up (negative), in one
  /// step; twips. On its way down its title bar stays on the work area, otherwise all of it.
  void SetHeight(int twips, int down = 0);
  void MoveTo(int left, int top);
  /// Puts the window in the middle of another one, or of the work area for null.
  void Center(HWND over);
  /// Moves the window aside that stands exactly over another one of its class.
  void StandApart();
  /// Moves the window onto the work area.
  void MoveInside();
  /// Makes the window as large as its layout and the work area have it.
  void Fit();

  void ScrollTo(int x, int y);
  /// Scrolls until a place in the window, pixels, can be seen.
  void ScrollIntoView(RECT place);
  /// A message of the window's own scroll bars.
  void OnScrollBar(bool vertical, WORD code);
  /// So many notches of the mouse's wheel, times WHEEL_DELTA.
  void OnWheel(int delta);

 private:
  SIZE FrameSize() const;
  SIZE ContentSize() const;
  /// What a window has that is as large as its layout and the work area have it.
  SIZE FittingSize() const;
  RECT WorkArea() const;
  void FitScrollBars();

  const layout::Form& layout_;
  HWND window_ = nullptr;
  UINT dpi_ = USER_DEFAULT_SCREEN_DPI;
  Fonts fonts_;
  std::optional<int> outerHeight_;  ///< Twips, once set; until then the layout's client size holds.
  POINT scrolled_ = {};             ///< Pixels that the content is scrolled by.
};

}  // namespace forms
