#pragma once

#include <map>

#include "forms/win32.h"
#include "resources/layout.h"

namespace forms {

/// How the system's text stands to the usual one: never as smaller, since a layout has its least
/// size at that.
struct TextScale {
  int real = 1;
  int usual = 1;
};

/// The fonts of one form at its DPI: the system's message font, and those of single controls, which
/// grow with it.
class Fonts {
 public:
  Fonts() = default;
  Fonts(const Fonts&) = delete;
  Fonts& operator=(const Fonts&) = delete;
  ~Fonts();

  /// Makes fonts for another DPI from now on; those handed out before live until the next call.
  void SetDpi(UINT dpi);
  /// The font of a row; null stands for the message font.
  HFONT Get(const layout::Font* font);
  /// The scales of the message font, which layouts follow across and down.
  /// A line of the message font, pixels.
  int LineHeight() const { return lineHeight_; }
  TextScale Across() const { return across_; }
  TextScale Down() const { return down_; }

 private:
  static void Delete(std::map<const layout::Font*, HFONT>& fonts);

  UINT dpi_ = 96;
  TextScale across_, down_;
  int lineHeight_ = 0;
  std::map<const layout::Font*, HFONT> fonts_;
  std::map<const layout::Font*, HFONT> former_;  ///< Controls hold them until they are laid out.
};

}  // namespace forms
