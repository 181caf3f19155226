#include "mainwindow/calendar_day.h"

#include <cmath>

namespace {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr sys_days kDateOrigin = year(1899) / month(12) / day(30);

}  // namespace

platform::Date DateOfDay(year_month_day date) {
  return static_cast<double>((sys_days(date) - kDateOrigin).count());
}

year_month_day DayOfDate(platform::Date date) {
  return kDateOrigin + std::chrono::days(std::lround(std::floor(date)));
}
