#include "forms/fonts.h"

#include <algorithm>
#include <cwchar>

namespace forms {
namespace {

LOGFONTW MessageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  return metrics.lfMessageFont;
}

LOGFONTW OwnFont(const layout::Font& font, UINT dpi, TextScale scale) {
  constexpr int kTenthsPerInch = 720;
  LOGFONTW description = {};
  description.lfHeight =
      -MulDiv(font.tenthsOfPoint, static_cast<int>(dpi) * scale.real, kTenthsPerInch * scale.usual);
  description.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  description.lfCharSet = DEFAULT_CHARSET;
  description.lfPitchAndFamily = VARIABLE_PITCH | (font.serif ? FF_ROMAN : FF_SWISS);
  const std::wstring face = Wide(font.face);
  std::wcsncpy(description.lfFaceName, face.c_str(), LF_FACESIZE - 1);
  return description;
}

/// What dialog units are made of: the width of the Latin letters, and the height of a line.
SIZE Measure(const LOGFONTW& description) {
  constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const HDC screen = GetDC(nullptr);
  const HFONT font = CreateFontIndirectW(&description);
  const HGDIOBJ before = SelectObject(screen, font);
  SIZE size = {};
  GetTextExtentPoint32W(screen, kLetters, static_cast<int>(std::size(kLetters)) - 1, &size);
  SelectObject(screen, before);
  DeleteObject(font);
  ReleaseDC(nullptr, screen);
  return size;
}

TextScale Scale(LONG real, LONG usual) {
  return {static_cast<int>(std::max(real, usual)), static_cast<int>(usual)};
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
  // The message font of Windows as it is delivered.
  constexpr layout::Font kUsual = {"Segoe UI", false, 90, false};
  const SIZE real = Measure(MessageFont(dpi));
  const SIZE usual = Measure(OwnFont(kUsual, dpi, {}));
  across_ = Scale(real.cx, usual.cx);
  down_ = Scale(real.cy, usual.cy);
  lineHeight_ = real.cy;
}

HFONT Fonts::Get(const layout::Font* font) {
  HFONT& made = fonts_[font];
  if (!made) {
    const LOGFONTW description = font ? OwnFont(*font, dpi_, down_) : MessageFont(dpi_);
    made = CreateFontIndirectW(&description);
  }
  return made;
}

void Fonts::Delete(std::map<const layout::Font*, HFONT>& fonts) {
  for (const auto& [font, made] : fonts) DeleteObject(made);
  fonts.clear();
}

}  // namespace forms
