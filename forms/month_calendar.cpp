#include "forms/month_calendar.h"

#include <algorithm>

namespace forms {
namespace {

Day FromSystem(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth, time.wDay};
}

int DaysIn(int year, int month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : kDays[month - 1];
}

}  // namespace

Day Today() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  return FromSystem(now);
}

void MonthCalendar::SetValue(Day day) {
  day.month = std::clamp(day.month, 1, 12);
  day.day = std::clamp(day.day, 1, DaysIn(day.year, day.month));
  Select(day);
}

void MonthCalendar::SetDay(int day) {
  if (day >= 1 && day <= DaysIn(value_.year, value_.month))
    Select({value_.year, value_.month, day});
}

void MonthCalendar::Select(Day day) {
  value_ = day;  // First, so that the control's own notification finds nothing new.
  SYSTEMTIME time = {};
  time.wYear = static_cast<WORD>(day.year);
  time.wMonth = static_cast<WORD>(day.month);
  time.wDay = static_cast<WORD>(day.day);
  Send(MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
}

void MonthCalendar::Created() {
  Select(value_);
}

Day MonthCalendar::Selected() const {
  SYSTEMTIME time = {};
  Send(MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
  return FromSystem(time);
}

LRESULT MonthCalendar::OnNotify(const NMHDR& header) {
  if (header.code != MCN_SELCHANGE && header.code != MCN_SELECT) return 0;
  const Day day = FromSystem(reinterpret_cast<const NMSELCHANGE&>(header).stSelStart);
  if (header.code == MCN_SELCHANGE) {
    SelectionChanged(day);
  } else if (!KeyTurnsPage()) {
    value_ = day;
    Raise(Event::kClick);
  }
  return 0;
}

// A picked day is told twice, as a change and then as a pick; a turned page only as a change.
void MonthCalendar::SelectionChanged(Day day) {
  if (key_ == 0 && MouseOnDay()) return;
  if (key_ == 0 || KeyTurnsPage()) {
    PageTurned(day);
  } else if (day != value_) {
    value_ = day;
    Raise(Event::kClick);
  }
}

void MonthCalendar::PageTurned(Day day) {
  if (day == value_) return;
  const Day before = value_;
  value_ = day;
  Raise(day.month != before.month ? Event::kMonthChange : Event::kYearChange);
}

bool MonthCalendar::KeyTurnsPage() const {
  return key_ == VK_PRIOR || key_ == VK_NEXT;
}

bool MonthCalendar::MouseOnDay() const {
  const DWORD at = GetMessagePos();
  MCHITTESTINFO hit = {};
  hit.cbSize = sizeof hit;
  hit.pt = {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
  ScreenToClient(window(), &hit.pt);
  Send(MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  return (hit.uHit & MCHT_CALENDARDATE) == MCHT_CALENDARDATE;
}

std::optional<LRESULT> MonthCalendar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_KEYDOWN && message != WM_LBUTTONUP) return {};
  key_ = message == WM_KEYDOWN ? wParam : 0;
  const LRESULT result = DefSubclassProc(window(), message, wParam, lParam);
  key_ = 0;
  // A month that was picked from the year's page lay where a day lies now, and no pick was told.
  if (message == WM_LBUTTONUP && window()) PageTurned(Selected());
  return result;
}

}  // namespace forms
