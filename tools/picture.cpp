#include "tools/picture.h"

#include <algorithm>
#include <array>

#include "tools/time_text.h"

namespace tools {
namespace {

constexpr int kGlyphWidth = 5;
constexpr int kGlyphHeight = 7;
constexpr int kAdvance = 6;
constexpr std::uint8_t kInk = 255;
constexpr int kBrightestScene = 170;  ///< The scene stays darker than the ink.

/// A letter of 5 x 7 dots, the leftmost dot in bit 4 of each row.
struct Glyph {
  char letter;
  std::array<std::uint8_t, kGlyphHeight> rows;
};

constexpr std::array<Glyph, 16> kFont = {{
    {'0', {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}},
    {'1', {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E}},
    {'2', {0x0E, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1F}},
    {'3', {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E}},
    {'4', {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}},
    {'5', {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E}},
    {'6', {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}},
    {'7', {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08}},
    {'8', {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}},
    {'9', {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C}},
    {'C', {0x0E, 0x11, 0x10, 0x10, 0x10, 0x11, 0x0E}},
    {'A', {0x0E, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x11}},
    {'M', {0x11, 0x1B, 0x15, 0x15, 0x11, 0x11, 0x11}},
    {'-', {0x00, 0x00, 0x00, 0x0E, 0x00, 0x00, 0x00}},
    {':', {0x00, 0x04, 0x00, 0x00, 0x00, 0x04, 0x00}},
    {' ', {}},
}};

std::size_t PixelAt(const Picture& picture, int x, int y) {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
         static_cast<std::size_t>(x);
}

const Glyph& GlyphOf(char letter) {
  return *std::find_if(kFont.begin(), kFont.end() - 1,
                       [&](const Glyph& glyph) { return glyph.letter == letter; });
}

/// Draws a line of text from a place on; one letter dot takes `scale` x `scale` dots.
void DrawLine(Picture& picture, int left, int top, int scale, const std::string& text) {
  for (const char letter : text) {
    const Glyph& glyph = GlyphOf(letter);
    for (int y = 0; y < kGlyphHeight * scale; ++y)
      for (int x = 0; x < kGlyphWidth * scale; ++x)
        if (glyph.rows[static_cast<std::size_t>(y / scale)] >> (kGlyphWidth - 1 - x / scale) & 1)
          picture.pixels[PixelAt(picture, left + x, top + y)] = kInk;
    left += kAdvance * scale;
  }
}

/// A slope of light that differs by camera, some grain, and a figure that walks with the time.
void DrawScene(Picture& picture, int camera, std::int64_t seconds) {
  Random random(static_cast<std::uint64_t>(seconds) * 64 + static_cast<std::uint64_t>(camera));
  const int figure = static_cast<int>(seconds * 5 % picture.width);
  for (int y = 0; y < picture.height; ++y)
    for (int x = 0; x < picture.width; ++x) {
      int light = 30 + (camera * 23) % 60 + 50 * y / picture.height + 20 * x / picture.width;
      if (std::abs(x - figure) < picture.width / 24 && y > picture.height / 2) light /= 3;
      light += static_cast<int>(random.Next() % 8);
      picture.pixels[PixelAt(picture, x, y)] =
          static_cast<std::uint8_t>(std::min(light, kBrightestScene));
    }
}

}  // namespace

Picture DrawPicture(int width, int height, int camera, std::int64_t seconds) {
  Picture picture = {width, height,
                     Bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))};
  DrawScene(picture, camera, seconds);
  const std::string time = TimeText(seconds);
  const int scale = std::min(width / kLeastWidth, height / kLeastHeight);
  const int left = 8 * scale;
  DrawLine(picture, left, 8 * scale, 2 * scale, "CAM " + std::to_string(camera));
  DrawLine(picture, left, 30 * scale, scale, time.substr(0, 10));
  DrawLine(picture, left, 42 * scale, scale, time.substr(11));
  return picture;
}

}  // namespace tools
