#include "tools/listing.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
namespace tools {
namespace {

std::string HashText(const std::uint8_t* bytes, std::ptrdiff_t count) {
  if (count == 0) return "-";
  char text[24];
  std::snprintf(text, sizeof text, "%016" PRIx64, Hash(bytes, static_cast<std::size_t>(count)));
  return text;
}

}  // namespace

std::string TimeText(std::int64_t seconds) {
  using namespace std::chrono;
  const sys_seconds time = sys_days(year(1960) / January / 1) + std::chrono::seconds(seconds);
  const sys_days day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text;
}

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

std::string Counted(std::int64_t count, const std::string& thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string DescribeBlock(const StoredBlock& block) {
  const std::string name = "block " + std::to_string(block.number);
  std::string damage = block.trouble;
  if (block.damagedImages > 0)
    damage += (damage.empty() ? "" : ", ") + Counted(block.damagedImages, "image");
  if (!damage.empty()) damage = " DAMAGED: " + damage;
  if (!block.isKnown) return name + damage;
  return name + " type=" + block.layout->name + " images=" + std::to_string(block.listedCount) +
         " start=" + TimeText(block.start) + " end=" + TimeText(block.end) +
         " sequence=" + std::to_string(Get(block.Trailer() + kSequence, 4)) +
         (block.ntsc ? " NTSC" : " PAL") + (block.compact ? " compact" : "") + damage;
}

std::string DescribeImage(const StoredBlock& block, const StoredImage& image) {
  const std::string name = std::to_string(block.number) + "." + std::to_string(image.index) +
                           " camera=" + std::to_string(image.camera + 1);
  if (!image.trouble.empty()) return name + " DAMAGED: " + image.trouble;
  const std::uint8_t* bytes = block.At(image.begin);
  const std::uint8_t* end = block.At(image.bytesEnd);
  while (end > bytes && end[-1] == 0) --end;
  const std::uint8_t* sound = block.At(image.soundBegin);
  const int soundBytes = image.end - image.soundBegin;
  return name + " time=" + TimeText(image.seconds) + " title=" + Quoted(image.title) +
         " flags=" + std::to_string(image.flags) + " text=" + Quoted(image.text) +
         " sound=" + std::to_string(soundBytes / kSectorBytes) +
         " size=" + std::to_string(image.bytesEnd - image.begin) +
         " hash=" + HashText(bytes, end - bytes) + " soundhash=" + HashText(sound, soundBytes);
}

}  // namespace tools
