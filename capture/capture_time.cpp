#include "capture/capture_time.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

using platform::kSecondsPerDay;

namespace {

constexpr platform::Date kEpoch = 21916;  // 1960-01-01.

/// The parts of a day's time, as `TimePart` numbers them.
enum Part { kHour = 1, kMinute = 2, kSecond = 3 };

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> pieces(1);
  for (const char c : text) {
    if (c == separator) {
      pieces.emplace_back();
    } else {
      pieces.back() += c;
    }
  }
  return pieces;
}

bool IsAm(const std::string& marker) {
  return marker.size() == 2 && (marker[0] | 0x20) == 'a' && (marker[1] | 0x20) == 'm';
}

/// The field of the text; none when the text has other pieces than date, time and marker.
std::optional<int> PartOfText(const std::string& text, int part) {
  const std::vector<std::string> pieces = Split(text, ' ');
  if (pieces.size() < 2) return std::nullopt;
  const std::vector<std::string> fields = Split(pieces[1], ':');
  if (fields.size() != 3) return std::nullopt;
  const std::string& field = fields[static_cast<std::size_t>(part - kHour)];
  int value = 0;
  const char* end = field.data() + field.size();
  const auto read = std::from_chars(field.data(), end, value);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  if (part == kHour && pieces.size() > 2 && !IsAm(pieces[2])) value += 12;
  return value;
}

}  // namespace

std::string SecondsToDateText(platform::DateText& dates, std::int32_t seconds) {
  return dates.Format(DateOfSeconds(seconds));
}

platform::Date DateOfSeconds(std::int32_t seconds) {
  return DateAfterEpoch(TimeOfStamp(seconds));
}

std::int64_t SecondsOfDate(platform::Date date) {
  const double seconds = std::round((date - kEpoch) * kSecondsPerDay);
  constexpr double kMost = 9e18;
  if (!(std::abs(seconds) < kMost)) return 0;  // No date at all.
  return static_cast<std::int64_t>(seconds);
}

platform::Date DateAfterEpoch(std::int64_t seconds) {
  return kEpoch + static_cast<double>(seconds) / kSecondsPerDay;
}

std::optional<int> TimePart(platform::DateText& dates, platform::Date when, int part) {
  if (part < kHour || part > kSecond) return std::nullopt;
  const std::optional<int> shown = PartOfText(dates.Format(when), part);
  return shown ? shown : ClockPart(when, part);
}

int ClockPart(platform::Date when, int part) {
  const std::int64_t second =
      (SecondsOfDate(when) % kSecondsPerDay + kSecondsPerDay) % kSecondsPerDay;
  if (part == kHour) return static_cast<int>(second / 3600);
  return static_cast<int>(part == kMinute ? second / 60 % 60 : second % 60);
}
