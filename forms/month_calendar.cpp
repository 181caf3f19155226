#include "forms/month_calendar.h"

#include <cstdlib>
#include <utility>

namespace forms {
namespace {

Day FromSystem(const SYSTEMTIME& time) {
  return std::chrono::year(time.wYear) / time.wMonth / time.wDay;
}

}  // namespace

Day Today() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  return FromSystem(now);
}

void MonthCalendar::SetValue(Day day) {
  value_ = day;  // First, so that the control's own notification finds nothing new.
  SYSTEMTIME time = {};
  time.wYear = static_cast<WORD>(static_cast<int>(day.year()));
  time.wMonth = static_cast<WORD>(static_cast<unsigned>(day.month()));
  time.wDay = static_cast<WORD>(static_cast<unsigned>(day.day()));
  Send(MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
}

void MonthCalendar::SetDay(std::chrono::day day) {
  const Day moved = value_.year() / value_.month() / day;
  if (moved.ok()) SetValue(moved);
}

void MonthCalendar::Created() {
  SetValue(value_);
}

/// Where the page does not fit its place, its text is made smaller: a column or an arrow that is
/// cut off cannot be used.
void MonthCalendar::LaidOut() {
  constexpr LONG kSmallestText = 6;  // Pixels.
  RECT client = {};
  GetClientRect(window(), &client);
  LOGFONTW font = {};
  GetObjectW(reinterpret_cast<HFONT>(Send(WM_GETFONT)), sizeof font, &font);
  const auto fits = [&] {
    RECT least = {};
    return !Send(MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&least)) ||
           (least.right - least.left <= client.right && least.bottom - least.top <= client.bottom);
  };
  while (!fits() && std::abs(font.lfHeight) > kSmallestText) {
    font.lfHeight += font.lfHeight < 0 ? 1 : -1;
    std::unique_ptr<HFONT, DeleteFont> smaller(CreateFontIndirectW(&font));
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(smaller.get()), TRUE);
    smallFont_ = std::move(smaller);
  }
}

Day MonthCalendar::Value() const {
  SYSTEMTIME time = {};
  return Send(MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&time)) ? FromSystem(time) : value_;
}

// A day that was picked by the mouse is told by a notice of its own, and where there is none the
// page was turned: by the arrows, the wheel, or a month of the year's page. The system repeats its
// notices from time to time, and what other programs choose comes as a change only.
LRESULT MonthCalendar::OnNotify(const NMHDR& header) {
  // What a key does is judged when it is done, as is what a press does when it ends.
  if (handled_ == WM_KEYDOWN) return 0;
  const bool pressed = handled_ == WM_LBUTTONUP || GetKeyState(VK_LBUTTON) < 0;
  if (header.code == MCN_SELECT)
    Take(true);
  else if (header.code == MCN_SELCHANGE && !pressed)
    Take(false);
  return 0;
}

void MonthCalendar::Take(bool picked) {
  const Day before = std::exchange(value_, Value());
  if (value_ == before) return;
  const bool samePage = value_.year() == before.year() && value_.month() == before.month();
  if (picked || samePage)
    Raise(Event::kClick);
  else
    Raise(value_.month() != before.month() ? Event::kMonthChange : Event::kYearChange);
}

std::optional<LRESULT> MonthCalendar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN && !HasFocus()) SetFocus();
  if (message != WM_KEYDOWN && message != WM_LBUTTONUP) return {};
  handled_ = message;
  const LRESULT result = DefSubclassProc(window(), message, wParam, lParam);
  handled_ = 0;
  const bool turnsPage = message == WM_LBUTTONUP || wParam == VK_PRIOR || wParam == VK_NEXT;
  Take(!turnsPage);
  return result;
}

}  // namespace forms
