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

/// Where a line of text stands, in picture dots, and how many of them one letter dot takes.
struct Line {
  int left;
  int top;
  int scale;
  int letters;
};

/// The three lines: camera, day, time of day.
std::array<Line, 3> LinesOf(const Picture& picture) {
  const int scale = std::min(picture.width / kLeastWidth, picture.height / kLeastHeight);
  return {{{8 * scale, 8 * scale, 2 * scale, 6},
           {8 * scale, 30 * scale, scale, 10},
           {8 * scale, 42 * scale, scale, 8}}};
}

std::size_t PixelAt(const Picture& picture, int x, int y) {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
         static_cast<std::size_t>(x);
}

const Glyph& GlyphOf(char letter) {
  return *std::find_if(kFont.begin(), kFont.end() - 1,
                       [&](const Glyph& glyph) { return glyph.letter == letter; });
}

void DrawDot(Picture& picture, int left, int top, int scale) {
  for (int y = top; y < top + scale; ++y)
    std::fill_n(picture.pixels.begin() + static_cast<std::ptrdiff_t>(PixelAt(picture, left, y)),
                scale, kInk);
}

void DrawLine(Picture& picture, const Line& line, const std::string& text) {
  for (int i = 0; i < static_cast<int>(text.size()); ++i) {
    const Glyph& glyph = GlyphOf(text[static_cast<std::size_t>(i)]);
    for (int y = 0; y < kGlyphHeight; ++y)
      for (int x = 0; x < kGlyphWidth; ++x)
        if (glyph.rows[static_cast<std::size_t>(y)] >> (kGlyphWidth - 1 - x) & 1)
          DrawDot(picture, line.left + (i * kAdvance + x) * line.scale, line.top + y * line.scale,
                  line.scale);
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

/// The letter that stands at a place, or 0.
char ReadLetter(const Picture& picture, int left, int top, int scale) {
  std::array<std::uint8_t, kGlyphHeight> rows = {};
  for (int y = 0; y < kGlyphHeight; ++y)
    for (int x = 0; x < kGlyphWidth; ++x) {
      const std::size_t at = PixelAt(picture, left + x * scale, top + y * scale);
      if (picture.pixels[at] > (kBrightestScene + kInk) / 2)
        rows[static_cast<std::size_t>(y)] |= static_cast<std::uint8_t>(1 << (kGlyphWidth - 1 - x));
    }
  const auto found = std::find_if(kFont.begin(), kFont.end(),
                                  [&](const Glyph& glyph) { return glyph.rows == rows; });
  return found == kFont.end() ? '\0' : found->letter;
}

std::string ReadLine(const Picture& picture, const Line& line) {
  std::string text;
  for (int i = 0; i < line.letters; ++i)
    text += ReadLetter(picture, line.left + i * kAdvance * line.scale, line.top, line.scale);
  return text;
}

}  // namespace

Picture DrawPicture(int width, int height, int camera, std::int64_t seconds) {
  Picture picture = {width, height,
                     Bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))};
  DrawScene(picture, camera, seconds);
  std::string head = camera < 10 ? "CAM 0" : "CAM ";
  head += std::to_string(camera);
  const std::string time = TimeText(seconds);
  const std::array<Line, 3> lines = LinesOf(picture);
  DrawLine(picture, lines[0], head);
  DrawLine(picture, lines[1], time.substr(0, 10));
  DrawLine(picture, lines[2], time.substr(11));
  return picture;
}

std::optional<PictureLabel> ReadLabel(const Picture& picture) {
  if (picture.width < kLeastWidth || picture.height < kLeastHeight) return std::nullopt;
  const std::array<Line, 3> lines = LinesOf(picture);
  const std::string head = ReadLine(picture, lines[0]);
  const std::string time = ReadLine(picture, lines[1]) + " " + ReadLine(picture, lines[2]);
  const std::string number = head.substr(4);
  if (head.compare(0, 4, "CAM ") != 0 || time.find('\0') != std::string::npos ||
      number.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  return PictureLabel{std::stoi(number), time};
}

}  // namespace tools
