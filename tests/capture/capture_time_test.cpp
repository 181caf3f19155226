#include "capture/capture_time.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/fake_dates.h"

namespace {

using Style = FakeDates::Style;

struct Stamp {
  std::int32_t seconds;
  platform::Date date;
  std::string text;  // In the United States.
};

const Stamp kStamps[] = {
    {0, DateOf(1960, 1, 1), "1/1/1960 12:00:00 AM"},
    {1, DateOf(1960, 1, 1, 0, 0, 1), "1/1/1960 12:00:01 AM"},
    {86400, DateOf(1960, 1, 2), "1/2/1960 12:00:00 AM"},
    {1262304000, DateOf(2000, 1, 1), "1/1/2000 12:00:00 AM"},
    {std::numeric_limits<std::int32_t>::max(), DateOf(2028, 1, 19, 3, 14, 7),
     "1/19/2028 3:14:07 AM"},
    {-1, DateOf(1959, 12, 31, 23, 59, 59), "12/31/1959 11:59:59 PM"},
    {std::numeric_limits<std::int32_t>::min(), DateOf(1891, 12, 12, 20, 45, 52),
     "12/12/1891 8:45:52 PM"},
};

TEST(CaptureTime, StampsAreDatesInEveryLocale) {
  constexpr double kTenthOfASecond = 0.1 / 86400;
  for (const Stamp& stamp : kStamps) {
    FakeDates us;
    EXPECT_EQ(SecondsToDateText(us, stamp.seconds), stamp.text);
    for (const Style style : {Style::kUs, Style::k24Hour, Style::kGerman, Style::kUnreadable}) {
      FakeDates dates(style);
      const platform::Date date = DateOfSeconds(dates, stamp.seconds);
      EXPECT_NEAR(date, stamp.date, kTenthOfASecond) << stamp.text;
      EXPECT_EQ(SecondsOfDate(date), stamp.seconds);
    }
  }
}

TEST(CaptureTime, SecondsAreRoundedAndTakeAnyDate) {
  EXPECT_EQ(SecondsOfDate(DateOf(1960, 1, 1) + 0.6 / 86400), 1);
  EXPECT_EQ(SecondsOfDate(DateOf(1960, 1, 1) - 0.6 / 86400), -1);
  EXPECT_EQ(SecondsOfDate(DateOf(2100, 1, 1)), 4418064000);
  EXPECT_EQ(SecondsOfDate(std::numeric_limits<double>::infinity()), 0);
  EXPECT_EQ(SecondsOfDate(std::numeric_limits<double>::quiet_NaN()), 0);
}

struct Parts {
  Style style;
  int hour, minute, second;  // Of the date.
  int hourShown;
};

TEST(CaptureTime, PartsFollowTheTextWhereItHasThem) {
  constexpr Parts kCases[] = {
      {Style::kUs, 15, 4, 5, 15},       {Style::kUs, 3, 4, 5, 3},
      {Style::kUs, 12, 30, 0, 24},      {Style::kUs, 0, 30, 0, 12},
      {Style::k24Hour, 0, 30, 0, 0},    {Style::k24Hour, 12, 30, 0, 12},
      {Style::kGerman, 23, 59, 59, 23}, {Style::kUnreadable, 15, 4, 5, 15},
      {Style::kUnreadable, 0, 0, 0, 0},
  };
  for (const Parts& parts : kCases) {
    FakeDates dates(parts.style);
    const platform::Date when = DateOf(2003, 1, 31, parts.hour, parts.minute, parts.second);
    EXPECT_EQ(TimePart(dates, when, 1), parts.hourShown) << dates.Format(when);
    EXPECT_EQ(TimePart(dates, when, 2), parts.minute) << dates.Format(when);
    EXPECT_EQ(TimePart(dates, when, 3), parts.second) << dates.Format(when);
    for (const int other : {0, 4, -1}) EXPECT_EQ(TimePart(dates, when, other), std::nullopt);
  }
  FakeDates dates;
  EXPECT_EQ(TimePart(dates, DateOf(12000, 1, 1, 7), 1), 7) << "a date without a text";
  EXPECT_EQ(ClockPart(DateOf(1892, 1, 18, 3, 14, 7), 1), 3);
  EXPECT_EQ(ClockPart(DateOf(2003, 1, 31, 12, 30), 1), 12);
}

/// A locale with texts of its own.
class OneText : public platform::DateText {
 public:
  explicit OneText(std::string text) : text_(std::move(text)) {}
  std::string Format(platform::Date) override { return text_; }
  std::optional<platform::Date> Parse(const std::string&) override { return std::nullopt; }

 private:
  std::string text_;
};

TEST(CaptureTime, OddTextsNeverBreakTheHour) {
  const platform::Date when = DateOf(2003, 1, 31, 9, 8, 7);
  const std::pair<const char*, int> kHours[] = {
      {"31/1/2003 9:08:07 am", 9},
      {"31/1/2003 9:08:07 p.m.", 21},
      {"31. 1. 2003 9:08:07", 9},
      {"31/1/2003 9.08.07", 9},
      {"31/1/2003 9:08", 9},
      {"31/1/2003 ::", 9},
      {"31/1/2003 9h:08:07", 9},
      {"", 9},
      {"31/1/2003 99999999999:8:7", 9},
  };
  for (const auto& [text, hour] : kHours) {
    OneText dates(text);
    EXPECT_EQ(TimePart(dates, when, 1), hour) << text;
  }
}

}  // namespace
