#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/date_text.h"

/// A capture time stamp is a 32-bit number of whole seconds since 1960-01-01 00:00:00, the
/// recorder's local time. It is kept as a signed number, but recorders' clocks run on: one that
/// reads as negative is a time after 2028-01-19 03:14:07, to 2096. Dates and their texts are the
/// platform's.

/// Whole seconds from the epoch to the time that a stamp tells.
constexpr std::int64_t TimeOfStamp(std::int32_t seconds) {
  return static_cast<std::uint32_t>(seconds);
}

/// The general date-time text of a capture time stamp.
std::string SecondsToDateText(platform::DateText& dates, std::int32_t seconds);

/// The date of a capture time stamp. That its text tells the same second cannot be relied on: some
/// read back as another, by two digits of a year for one.
platform::Date DateOfSeconds(std::int32_t seconds);

/// Whole seconds from the epoch to a date, rounded.
std::int64_t SecondsOfDate(platform::Date date);

/// The date `seconds` whole seconds after the epoch.
platform::Date DateAfterEpoch(std::int64_t seconds);

/// One field of a date as its general text shows it: `part` 1 the hour of a 24-hour clock, 2 the
/// minute, 3 the second; none for any other part. Twelve is added to the hour whenever the text's
/// day-half marker is not "AM": 12:30 PM is hour 24 and 12:30 AM hour 12.
std::optional<int> TimePart(platform::DateText& dates, platform::Date when, int part);

/// One field of a date by the 24-hour clock, whatever its text: `part` as above.
int ClockPart(platform::Date when, int part);
