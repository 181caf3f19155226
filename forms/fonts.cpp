#include "forms/fonts.h"

#include <cwchar>

#include "forms/text.h"

namespace forms {
namespace {

LOGFONTW MessageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  return metrics.lfMessageFont;
}

LOGFONTW OwnFont(const layout::Font& font, UINT dpi) {
  constexpr int kTenthsPerInch = 720;
  LOGFONTW description = {};
  description.lfHeight = -MulDiv(font.tenthsOfPoint, static_cast<int>(dpi), kTenthsPerInch);
  description.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  description.lfCharSet = DEFAULT_CHARSET;
  const std::wstring face = Wide(font.face);
  std::wcsncpy(description.lfFaceName, face.c_str(), LF_FACESIZE - 1);
  return description;
}

}  // namespace

Fonts::~Fonts() {
  Delete(former_);
  Delete(fonts_);
}

void Fonts::SetDpi(UINT dpi) {
  dpi_ = dpi;
  Delete(former_);
  former_.swap(fonts_);
}

HFONT Fonts::Get(const layout::Font* font) {
  HFONT& made = fonts_[font];
  if (!made) {
    const LOGFONTW description = font ? OwnFont(*font, dpi_) : MessageFont(dpi_);
    made = CreateFontIndirectW(&description);
  }
  return made;
}

void Fonts::Delete(std::map<const layout::Font*, HFONT>& fonts) {
  for (const auto& [font, made] : fonts) DeleteObject(made);
  fonts.clear();
}

}  // namespace forms
