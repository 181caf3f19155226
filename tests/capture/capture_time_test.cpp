#include "capture/capture_time.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/fake_platform.h"

namespace {

using Style = FakeDates::Style;

const struct {
  std::int32_t seconds;
  platform::Date date;
  std::string text;  // In the United States.
} kStamps[] = {
    {1262304000, DateOf(2000, 1, 1), "1/1/2000 12:00:00 AM"},
    {std::numeric_limits<std::int32_t>::max(), DateOf(2028, 1, 19, 3, 14, 7),
     "1/19/2028 3:14:07 AM"},
    {std::numeric_limits<std::int32_t>::min(), DateOf(2028, 1, 19, 3, 14, 8),
     "1/19/2028 3:14:08 AM"},
    {-1, DateOf(2096, 2, 6, 6, 28, 15), "2/6/2096 6:28:15 AM"},
};

TEST(CaptureTime, StampsAreDatesTo2096) {
  constexpr double kTenthOfASecond = 0.1 / 86400;
  FakeDates dates;
  for (const auto& stamp : kStamps) {
    EXPECT_EQ(SecondsToDateText(dates, stamp.seconds), stamp.text);
    EXPECT_NEAR(DateOfSeconds(stamp.seconds), stamp.date, kTenthOfASecond) << stamp.text;
    EXPECT_EQ(SecondsOfDate(stamp.date), TimeOfStamp(stamp.seconds));
  }
}

TEST(CaptureTime, SecondsAreRoundedAndTakeAnyDate) {
  EXPECT_EQ(SecondsOfDate(DateOf(1960, 1, 1) + 0.6 / 86400), 1);
  EXPECT_EQ(SecondsOfDate(DateOf(1960, 1, 1) - 0.6 / 86400), -1);
  EXPECT_EQ(SecondsOfDate(DateOf(2100, 1, 1)), 4418064000);
  for (const double none : {1e300, std::numeric_limits<double>::quiet_NaN()}) {
    FakeDates dates(Style::kUnreadable);
    EXPECT_EQ(SecondsOfDate(none), 0);
    EXPECT_TRUE(TimePart(dates, none, 1));
  }
}

/// A locale with texts of its own.
struct OneText : FakeDates {
  std::string text;
  std::string Format(platform::Date) override { return text; }
};

TEST(CaptureTime, PartsFollowTheTextWhereItHasThem) {
  const platform::Date when = DateOf(2003, 1, 31, 19, 18, 17);
  OneText dates;
  const auto expect = [&](const char* text, int hour, int minute, int second) {
    dates.text = text;
    EXPECT_EQ(TimePart(dates, when, 1), hour) << text;
    EXPECT_EQ(TimePart(dates, when, 2), minute) << text;
    EXPECT_EQ(TimePart(dates, when, 3), second) << text;
    for (const int other : {0, 4, -1}) EXPECT_EQ(TimePart(dates, when, other), std::nullopt);
  };
  expect("1/31/2003 3:04:05 PM", 15, 4, 5);
  expect("1/31/2003 12:30:00 PM", 24, 30, 0);
  expect("1/31/2003 12:30:00 AM", 12, 30, 0);
  expect("31/1/2003 9:08:07 am", 9, 8, 7);
  expect("31/1/2003 9:08:07 p.m.", 21, 8, 7);
  expect("31.01.2003 23:59:59", 23, 59, 59);
  expect("1/31/2003 0:30:00", 0, 30, 0);
  // Where there are no parts that can be read, those of the date count.
  for (const char* text :
       {"31. 1. 2003 9:09:09", "31/1/2003 9.09.09", "31/1/2003 9:09", "31/1/2003 9:09:09:09",
        "31/1/2003 ::", "31/1/2003", "31/1/2003 9h:09m:09s", "",
        "31/1/2003 99999999999:99999999999:99999999999"})
    expect(text, 19, 18, 17);
  EXPECT_EQ(ClockPart(DateOf(1892, 1, 18, 3, 14, 7), 1), 3);
}

}  // namespace
