#include "tests/support/fake_dates.h"

#include <chrono>
#include <cmath>
#include <ctime>

namespace {

namespace chrono = std::chrono;

constexpr double kSecondsPerDay = 86400;
const chrono::sys_seconds kDayZero = chrono::sys_days(chrono::year(1899) / 12 / 30);

/// What `strftime` and `strptime` call each style's text.
constexpr const char* kPatterns[] = {"%-m/%-d/%Y %-I:%M:%S %p", "%-m/%-d/%Y %-H:%M:%S",
                                     "%d.%m.%Y %H:%M:%S", "%-d of %-m %Y, %-Hh%M"};

}  // namespace

platform::Date DateOf(int year, int month, int day, int hour, int minute, int second) {
  const chrono::sys_days date = chrono::year(year) / month / day;
  return static_cast<double>((date - kDayZero).count()) / kSecondsPerDay +
         (hour * 3600 + minute * 60 + second) / kSecondsPerDay;
}

std::string FakeDates::Format(platform::Date date) {
  if (!(date > DateOf(100, 1, 1) && date < DateOf(9999, 12, 31))) return "";
  const auto seconds = chrono::seconds(std::llround(date * kSecondsPerDay));
  const std::time_t time = (kDayZero + seconds).time_since_epoch().count();
  std::tm parts = {};
  gmtime_r(&time, &parts);
  char text[64];
  return {text, std::strftime(text, sizeof text, kPatterns[static_cast<int>(style)], &parts)};
}

std::optional<platform::Date> FakeDates::Parse(const std::string& text) {
  std::tm parts = {};
  if (style == Style::kUnreadable ||
      !strptime(text.c_str(), kPatterns[static_cast<int>(style)], &parts))
    return std::nullopt;
  return DateOf(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                parts.tm_sec);
}
