#include "tools/damage.h"

#include <algorithm>
#include <stdexcept>

namespace tools {
namespace {

/// Calls `change` with the start of each image's text sector and the end of each image's tail.
void ForEachTail(Victim& victim, const std::function<void(std::uint8_t*)>& change) {
  const Layout& layout = victim.layout;
  const int count = victim.ImageCount();
  for (int i = 0; i < count; ++i) {
    const int parts = layout.entryParts == kNone ? 0 : victim.Entry(i)[layout.entryParts];
    const int end =
        layout.PlaceOf(victim.Trailer(), i + 1) - ((parts >> 3) + (parts & 3)) * kSectorBytes;
    if (end >= kSectorBytes && end < layout.trailer) change(victim.block + end);
  }
}

/// The same for those that have a text.
void ForEachText(Victim& victim, const std::function<void(std::uint8_t*)>& change) {
  ForEachTail(victim, [&](std::uint8_t* sector) {
    if (std::equal(kTextMark.begin(), kTextMark.end(), sector)) change(sector);
  });
}

void SetTextLengths(Victim& victim, std::uint32_t length) {
  ForEachText(victim, [&](std::uint8_t* sector) { Put(sector + kTextLength, 4, length); });
}

void ReverseSectors(Victim& victim) {
  const int count = victim.ImageCount();
  const int at = victim.layout.entrySector;
  for (int i = 0; i < count / 2; ++i)
    std::swap_ranges(victim.Entry(i) + at, victim.Entry(i) + at + 2,
                     victim.Entry(count - 1 - i) + at);
}

void SetSectors(Victim& victim, std::uint32_t sector) {
  for (int i = 0; i < victim.ImageCount(); ++i)
    Put(victim.Entry(i) + victim.layout.entrySector, 2, sector);
}

void SetStamps(Victim& victim, std::uint32_t stamp) {
  for (const int place : {kEarliest, kStart, kEnd}) Put(victim.Trailer() + place, 4, stamp);
}

void SetCount(Victim& victim, std::uint32_t count) {
  Put(victim.Trailer() + victim.layout.imageCount, 2, count);
}

void FlipBytes(Victim& victim, int from, int count) {
  for (int i = 0; i < 16; ++i)
    victim.block[from + victim.random.Between({0, count - 1})] ^=
        static_cast<std::uint8_t>(victim.random.Between({1, 255}));
}

void FillTrailer(Victim& victim, const std::function<std::uint8_t()>& next) {
  std::generate_n(victim.Trailer(), victim.layout.trailerBytes, next);
}

}  // namespace

int Victim::ImageCount() {
  return std::min(static_cast<int>(Get(Trailer() + layout.imageCount, 2)), layout.mostImages);
}

const std::vector<DamageKind>& DamageKinds() {
  static const std::vector<DamageKind> kinds = {
      {"count-huge", "image count 65535", [](Victim& v) { SetCount(v, 0xFFFF); }},
      {"count-more", "image count one too large",
       [](Victim& v) { SetCount(v, static_cast<std::uint32_t>(v.ImageCount()) + 1); }},
      {"count-zero", "image count 0", [](Victim& v) { SetCount(v, 0); }},
      {"sectors-reversed", "start sectors in reverse order", ReverseSectors},
      {"sectors-same", "all images start at sector 2", [](Victim& v) { SetSectors(v, 2); }},
      {"sectors-low", "all images start at sector 0", [](Victim& v) { SetSectors(v, 0); }},
      {"sectors-high", "all images start at sector 4095", [](Victim& v) { SetSectors(v, 0x0FFF); }},
      {"stamps-negative", "block times of 2^32 - 1", [](Victim& v) { SetStamps(v, 0xFFFFFFFF); }},
      {"type-unknown", "block type 0x7F", [](Victim& v) { v.Trailer()[kType] = 0x7F; }},
      {"trailer-zero", "trailer of zeros", [](Victim& v) { FillTrailer(v, [] { return 0; }); }},
      {"trailer-noise", "trailer of random bytes",
       [](Victim& v) {
         FillTrailer(v, [&] { return static_cast<std::uint8_t>(v.random.Next()); });
       }},
      {"trailer-flips", "16 random bytes of the trailer changed",
       [](Victim& v) { FlipBytes(v, v.layout.trailer, v.layout.trailerBytes); }},
      {"data-flips", "16 random bytes of the data area changed",
       [](Victim& v) { FlipBytes(v, 0, v.layout.trailer); }},
      {"tails-zero", "image tails of zeros",
       [](Victim& v) {
         ForEachTail(v,
                     [](std::uint8_t* end) { std::fill(end - kTailBytes, end, std::uint8_t{0}); });
       }},
      {"text-huge", "text lengths of 2^31 - 1", [](Victim& v) { SetTextLengths(v, 0x7FFFFFFF); }},
      {"text-negative", "text lengths of -1", [](Victim& v) { SetTextLengths(v, 0xFFFFFFFF); }},
      {"text-unmarked", "text sectors without their marker",
       [](Victim& v) { ForEachText(v, [](std::uint8_t* sector) { sector[3] ^= 0xFF; }); }},
  };
  return kinds;
}

Damage ParseDamage(const std::string& text) {
  const std::size_t at = text.find('@');
  const std::string name = text.substr(0, at);
  const auto& kinds = DamageKinds();
  const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                 [&](const DamageKind& each) { return each.name == name; });
  if (kind == kinds.end()) throw std::invalid_argument("unknown damage " + name);
  return {&*kind, at == std::string::npos ? 0 : std::stoi(text.substr(at + 1))};
}

}  // namespace tools
