#pragma once

#include <optional>
#include <string>

#include "platform/date_text.h"

/// Date texts of one locale, for the years 100 to 9999.
class FakeDates : public platform::DateText {
 public:
  enum class Style {
    kUs,         ///< "1/31/2003 3:04:05 PM"
    k24Hour,     ///< "1/31/2003 15:04:05"
    kGerman,     ///< "31.01.2003 15:04:05"
    kUnreadable  ///< "31 Jan 2003, 15h04": pieces at other places, and it reads back nothing.
  };

  explicit FakeDates(Style which = Style::kUs) : style(which) {}

  std::string Format(platform::Date date) override;
  std::optional<platform::Date> Parse(const std::string& text) override;

  Style style;
};

/// The date of a day and a time of day.
platform::Date DateOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
