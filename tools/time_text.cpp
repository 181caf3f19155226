#include "tools/time_text.h"

#include <chrono>
#include <cstdio>
#include <stdexcept>

namespace tools {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int64_t kSecondsInDay = 86400;
constexpr sys_days kEpoch = std::chrono::year(1960) / std::chrono::January / std::chrono::day(1);

}  // namespace

std::string TimeText(std::int64_t seconds) {
  std::int64_t day = seconds / kSecondsInDay;
  std::int64_t rest = seconds % kSecondsInDay;
  if (rest < 0) {
    rest += kSecondsInDay;
    --day;
  }
  const year_month_day date(kEpoch + days(day));
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(rest / 3600), static_cast<int>(rest / 60 % 60),
                static_cast<int>(rest % 60));
  return text;
}

std::int64_t ParseTime(const std::string& text) {
  int year = 0;
  unsigned month = 0, day = 0, hour = 0, minute = 0, second = 0;
  const int found = std::sscanf(text.c_str(), "%d-%u-%u%*1[ T]%u:%u:%u", &year, &month, &day, &hour,
                                &minute, &second);
  if (found == 1 && text.find_first_not_of("0123456789", 1) == std::string::npos)
    return std::stoll(text);
  const year_month_day date{std::chrono::year(year), std::chrono::month(month),
                            std::chrono::day(day)};
  if ((found != 3 && found != 6) || !date.ok() || hour > 23 || minute > 59 || second > 59)
    throw std::invalid_argument("not a time: " + text);
  const unsigned inDay = hour * 3600 + minute * 60 + second;
  return (sys_days(date) - kEpoch).count() * kSecondsInDay + inDay;
}

}  // namespace tools
