#include "tests/support/fake_dates.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace {

namespace chrono = std::chrono;

constexpr double kSecondsPerDay = 86400;
const chrono::sys_days kDayZero = chrono::year(1899) / 12 / 30;

}  // namespace

platform::Date DateOf(int year, int month, int day, int hour, int minute, int second) {
  const chrono::sys_days date = chrono::year(year) / month / day;
  return (date - kDayZero).count() + (hour * 3600 + minute * 60 + second) / kSecondsPerDay;
}

std::string FakeDates::Format(platform::Date date) {
  if (!(date > DateOf(100, 1, 1) && date < DateOf(9999, 12, 31))) return "";
  const auto total = static_cast<long long>(std::llround(date * kSecondsPerDay));
  const auto days = static_cast<int>(std::floor(static_cast<double>(total) / kSecondsPerDay));
  const auto rest = static_cast<int>(total - days * 86400LL);
  const chrono::year_month_day ymd = kDayZero + chrono::days(days);
  const int y = static_cast<int>(ymd.year());
  const auto m = static_cast<unsigned>(ymd.month());
  const auto d = static_cast<unsigned>(ymd.day());
  const int hour = rest / 3600, minute = rest / 60 % 60, second = rest % 60;
  char text[64];
  switch (style) {
    case Style::kUs:
      std::snprintf(text, sizeof text, "%u/%u/%d %d:%02d:%02d %s", m, d, y, (hour + 11) % 12 + 1,
                    minute, second, hour < 12 ? "AM" : "PM");
      break;
    case Style::k24Hour:
      std::snprintf(text, sizeof text, "%u/%u/%d %d:%02d:%02d", m, d, y, hour, minute, second);
      break;
    case Style::kGerman:
      std::snprintf(text, sizeof text, "%02u.%02u.%d %02d:%02d:%02d", d, m, y, hour, minute,
                    second);
      break;
    case Style::kUnreadable:
      std::snprintf(text, sizeof text, "%u of %u %d, %dh%02d", d, m, y, hour, minute);
      break;
  }
  return text;
}

std::optional<platform::Date> FakeDates::Parse(const std::string& text) {
  int y = 0, m = 0, d = 0, hour = 0, minute = 0, second = 0;
  char half = 0;
  int read = 0;
  switch (style) {
    case Style::kUs:
      read = std::sscanf(text.c_str(), "%d/%d/%d %d:%d:%d %cM", &m, &d, &y, &hour, &minute, &second,
                         &half);
      if (read != 7) return std::nullopt;
      hour = hour % 12 + (half == 'P' ? 12 : 0);
      break;
    case Style::k24Hour:
      read = std::sscanf(text.c_str(), "%d/%d/%d %d:%d:%d", &m, &d, &y, &hour, &minute, &second);
      break;
    case Style::kGerman:
      read = std::sscanf(text.c_str(), "%d.%d.%d %d:%d:%d", &d, &m, &y, &hour, &minute, &second);
      break;
    case Style::kUnreadable:
      return std::nullopt;
  }
  if (read < 6 || m < 1 || m > 12 || d < 1 || d > 31) return std::nullopt;
  return DateOf(y, m, d, hour, minute, second);
}
