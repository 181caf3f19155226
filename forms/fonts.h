#pragma once

#include <map>

#include "forms/win32.h"
#include "resources/layout.h"

namespace forms {

/// The fonts of one form at its DPI: the system's message font, and those of single controls.
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

 private:
  static void Delete(std::map<const layout::Font*, HFONT>& fonts);

  UINT dpi_ = 96;
  std::map<const layout::Font*, HFONT> fonts_;
  std::map<const layout::Font*, HFONT> former_;  ///< Controls hold them until they are laid out.
};

}  // namespace forms
