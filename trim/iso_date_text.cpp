#include "trim/iso_date_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>

#include "capture/capture_time.h"
#include "save/time_range.h"

namespace trim {
namespace {

/// Whether a text has digits where the pattern has "0", and else the pattern's own characters.
bool Matches(std::string_view text, std::string_view pattern) {
  return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char c, char p) {
    return p == '0' ? c >= '0' && c <= '9' : c == p || (c == 'T' && p == ' ');
  });
}

/// The number whose `length` digits begin at `at`.
int Number(const std::string& text, std::size_t at, std::size_t length) {
  int number = 0;
  std::from_chars(text.data() + at, text.data() + at + length, number);
  return number;
}

}  // namespace

std::string IsoDateText::Format(platform::Date date) {
  const auto day = DayOfDate(date);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                ClockPart(date, 1), ClockPart(date, 2), ClockPart(date, 3));
  return text;
}

std::optional<platform::Date> IsoDateText::Parse(const std::string& text) {
  if (!Matches(text, "0000-00-00 00:00:00")) return {};
  const std::chrono::year_month_day day(std::chrono::year(Number(text, 0, 4)),
                                        std::chrono::month(Number(text, 5, 2)),
                                        std::chrono::day(Number(text, 8, 2)));
  const std::int64_t hour = Number(text, 11, 2);
  const std::int64_t minute = Number(text, 14, 2);
  const std::int64_t second = Number(text, 17, 2);
  if (!day.ok() || hour > 23 || minute > 59 || second > 59) return {};
  return DateAfterEpoch(SecondsOfDate(DateOfDay(day)) + hour * 3600 + minute * 60 + second);
}

}  // namespace trim
