#pragma once

#include <chrono>

#include "platform/date_text.h"

/// Dates as calendars show them, without a time of day.

/// The date on which a day begins.
platform::Date DateOfDay(std::chrono::year_month_day day);
/// The day on which a date lies.
std::chrono::year_month_day DayOfDate(platform::Date date);
