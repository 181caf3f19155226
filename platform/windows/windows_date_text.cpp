#include "platform/windows/windows_date_text.h"

#include <cmath>

#include "platform/windows/text.h"
#include "platform/windows/win32.h"
// After windows.h, which it needs.
#include <oleauto.h>

namespace platform {
namespace {

// Day 0 of both scales is 1899-12-30; Windows counts 100-nanosecond units from 1601-01-01 on.
constexpr double kDaysFrom1601 = 109205;
constexpr double kDaysToYear10000 = 2958466;
constexpr std::uint64_t kUnitsPerSecond = 10'000'000;

// By way of the system's file time, so that no calendar has to be reckoned here.
std::optional<SYSTEMTIME> ToSystemTime(Date date) {
  if (!(date >= -kDaysFrom1601 && date < kDaysToYear10000)) return {};  // NaN is refused as well.
  const double seconds = std::round((date + kDaysFrom1601) * kSecondsPerDay);
  const std::uint64_t units = static_cast<std::uint64_t>(seconds) * kUnitsPerSecond;
  const FILETIME fileTime = {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
  SYSTEMTIME time = {};
  if (!FileTimeToSystemTime(&fileTime, &time)) return {};
  return time;
}

// Both are used to whole seconds only.
bool AreSameSecond(Date a, Date b) {
  return std::fabs(a - b) * kSecondsPerDay < 0.5;
}

constexpr int kLongest = 128;

std::wstring DayText(const SYSTEMTIME& time) {
  wchar_t text[kLongest] = {};
  return GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, text, kLongest) ? text
                                                                                             : L"";
}

std::wstring ClockText(const SYSTEMTIME& time) {
  wchar_t text[kLongest] = {};
  return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, text, kLongest) ? text : L"";
}

std::wstring ClockFormat() {
  wchar_t format[kLongest] = {};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, format, kLongest);
  return format;
}

std::optional<Date> Read(std::wstring text) {
  DATE parsed = 0;
  if (FAILED(VarDateFromStr(text.data(), LOCALE_USER_DEFAULT, 0, &parsed))) return {};
  // The system counts days downwards before its day 0, but each day's time upwards even there.
  const double day = std::trunc(parsed);
  return day + std::fabs(parsed - day);
}

}  // namespace

std::string WindowsDateText::Format(Date date) {
  last_ = {};
  const std::optional<SYSTEMTIME> time = ToSystemTime(date);
  if (!time) return {};
  const std::wstring day = DayText(*time);
  const std::wstring clock = ClockText(*time);
  if (day.empty() || clock.empty()) return {};
  // The text shows whole seconds.
  last_ = {std::round(date * kSecondsPerDay) / kSecondsPerDay, day, Utf8(day + L" " + clock)};
  return last_.text;
}

std::optional<Date> WindowsDateText::Parse(const std::string& text) {
  if (!text.empty() && text == last_.text && ReadsBack(last_)) return last_.date;
  return Read(Wide(text));
}

bool WindowsDateText::ReadsBack(const Written& written) {
  return DayReadsBack(written) && ClockReadsBack(written.day, written.date);
}

// Two years may share a text, of which only one is read: the day itself must be the same, too.
bool WindowsDateText::DayReadsBack(const Written& written) {
  if (written.day != triedDay_.day || std::floor(written.date) != std::floor(triedDay_.date)) {
    triedDay_ = written;
    const std::optional<Date> read = Read(Wide(written.text));
    dayReadsBack_ = read && AreSameSecond(*read, written.date);
  }
  return dayReadsBack_;
}

bool WindowsDateText::ClockReadsBack(const std::wstring& day, Date date) {
  const std::wstring format = ClockFormat();  // The user may change it at any time.
  if (format == triedClock_) return clockReadsBack_;
  triedClock_ = format;
  const auto readsBack = [&](int second) {
    const Date when = std::floor(date) + Date(second) / kSecondsPerDay;
    const std::optional<SYSTEMTIME> time = ToSystemTime(when);
    const std::optional<Date> read =
        time ? Read(day + L" " + ClockText(*time)) : std::optional<Date>();
    return read && AreSameSecond(*read, when);
  };
  clockReadsBack_ = true;
  for (int hour = 0; hour < 24; ++hour) clockReadsBack_ &= readsBack(hour * 3600);
  for (int unit = 0; unit < 60; ++unit) clockReadsBack_ &= readsBack(unit * 60) && readsBack(unit);
  return clockReadsBack_;
}

}  // namespace platform
