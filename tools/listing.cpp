#include "tools/listing.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <iterator>

#include "tools/payload.h"
#include "tools/time_text.h"

namespace tools {
namespace {

std::string HashText(const std::uint8_t* bytes, std::ptrdiff_t count) {
  if (count == 0) return "-";
  char text[24];
  std::snprintf(text, sizeof text, "%016" PRIx64, Hash(bytes, static_cast<std::size_t>(count)));
  return text;
}

/// Bytes up to the last one that is not zero.
std::ptrdiff_t CountWithoutZeros(const std::uint8_t* begin, const std::uint8_t* end) {
  const auto last = std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(begin),
                                 [](std::uint8_t byte) { return byte != 0; });
  return last.base() - begin;
}

std::string TimeWord(std::int64_t seconds) {
  std::string text = TimeText(seconds);
  text[text.find(' ')] = 'T';
  return text;
}

/// Whether an image's time is its own, or only spread over its block.
bool HasOwnTime(const StoredBlock& block, const StoredImage& image) {
  return image.hasTail || block.layout->entryTime != kNone;
}

}  // namespace

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned char>(c));
    const bool plain = c >= ' ' && c <= '~' && c != '"' && c != '\\';
    quoted += plain ? std::string(1, c) : escape;
  }
  return quoted + '"';
}

std::string DescribeBlock(const StoredBlock& block) {
  const std::string name = "block " + std::to_string(block.number);
  if (!block.isKnown) return name + " DAMAGED: of no type that such a recording has";
  return name + " type=" + block.layout->name + " images=" + std::to_string(block.listedCount) +
         " start=" + TimeWord(block.start) + " end=" + TimeWord(block.end) +
         " sequence=" + std::to_string(Get(block.Trailer() + kSequence, 4)) +
         (block.ntsc ? " NTSC" : " PAL") + (block.compact ? " compact" : "");
}

std::string DescribeImage(const StoredBlock& block, const StoredImage& image) {
  const std::string name = std::to_string(block.number) + "." + std::to_string(image.index) +
                           " camera=" + std::to_string(image.camera + 1);
  if (!image.trouble.empty()) return name + " DAMAGED: " + image.trouble;
  const std::uint8_t* bytes = block.At(image.begin);
  const std::uint8_t* sound = block.At(image.soundBegin);
  const int soundBytes = image.end - image.soundBegin;
  return name + " time=" + TimeWord(image.seconds) + " title=" + Quoted(image.title) +
         " flags=" + std::to_string(image.flags) + " text=" + Quoted(image.text) +
         " sound=" + std::to_string(soundBytes / kSectorBytes) +
         " size=" + std::to_string(image.bytesEnd - image.begin) +
         " hash=" + HashText(bytes, CountWithoutZeros(bytes, block.At(image.bytesEnd))) +
         " soundhash=" + HashText(sound, soundBytes);
}

std::string CheckImage(const StoredBlock& block, const StoredImage& image) {
  if (!image.trouble.empty()) return image.trouble;
  const auto content =
      ReadPayload(block.At(image.begin), static_cast<std::size_t>(image.bytesEnd - image.begin));
  if (!content) return "is none of make_recording's";
  if (!content->trouble.empty()) return content->trouble;
  if (content->camera != image.camera + 1) return "shows camera " + std::to_string(content->camera);
  if (HasOwnTime(block, image) && content->time != image.seconds)
    return "shows " + TimeText(content->time);
  return "";
}

}  // namespace tools
