#include "mainwindow/calendar_day.h"

#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/fake_platform.h"

TEST(CalendarDay, IsTheDayOnWhichADateLies) {
  using std::chrono::year;
  const auto leapDay = year(2004) / 2 / 29;
  EXPECT_EQ(DateOfDay(leapDay), DateOf(2004, 2, 29));
  EXPECT_EQ(DayOfDate(DateOf(2004, 2, 29, 23, 59, 59)), leapDay);
  EXPECT_EQ(DayOfDate(DateOf(1892, 1, 18, 12)), year(1892) / 1 / 18);
}
