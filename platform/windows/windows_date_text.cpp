#include "platform/windows/factories.h"

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

/// Date-time text by the user's settings in Windows.
class WindowsDateText : public DateText {
 public:
  std::string Format(Date date) override {
    const std::optional<SYSTEMTIME> time = ToSystemTime(date);
    if (!time) return {};
    const std::wstring day = DayText(*time);
    const std::wstring clock = ClockText(*time);
    return day.empty() || clock.empty() ? "" : Utf8(day + L" " + clock);
  }

  std::optional<Date> Parse(const std::string& text) override {
    DATE parsed = 0;
    if (FAILED(VarDateFromStr(Wide(text).data(), LOCALE_USER_DEFAULT, 0, &parsed))) return {};
    // The system counts days downwards before its day 0, but each day's time upwards even there.
    const double day = std::trunc(parsed);
    return day + std::fabs(parsed - day);
  }
};

}  // namespace

std::unique_ptr<DateText> MakeWindowsDateText() {
  return std::make_unique<WindowsDateText>();
}

}  // namespace platform
