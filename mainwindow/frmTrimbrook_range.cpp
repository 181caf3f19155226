// The main window's time range: the two sliders, and the custom range that moves them.

#include <cstdlib>

#include "capture/capture_time.h"
#include "capture/mdlFileProcessing.h"
#include "mainwindow/calendar_day.h"
#include "mainwindow/frmTrimbrook.h"
#include "mainwindow/messages.h"

using mdlFileProcessing::dtBlockEnd;
using mdlFileProcessing::dtBlockStart;

namespace {

constexpr char kStartPastEnd[] = "The Start Time should be earlier than the Ending Time!";
constexpr char kEndBeforeStart[] = "The End Time should be later than the Start Time!";

platform::Date DateOf(const forms::Day& day) {
  using namespace std::chrono;
  return DateOfDay(year(day.year) / day.month / day.day);
}

forms::Day CalendarDay(platform::Date date) {
  const auto day = DayOfDate(date);
  return {static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day()))};
}

/// The time stamp of a calendar's day at a time of day.
std::int64_t SecondsOf(const forms::MonthCalendar& calendar, forms::UpDown& hour,
                       forms::UpDown& minute, forms::UpDown& second) {
  const int timeOfDay = hour.Value() * 3600 + minute.Value() * 60 + second.Value();
  return SecondsOfDate(DateOf(calendar.Value())) + timeOfDay;
}

}  // namespace

void frmTrimbrook::Slider1_Scroll() {
  if (Slider1.Value() > Slider2.Value()) RefuseMove(Slider1, Slider2, kStartPastEnd);
  Slider1_Change();
}

void frmTrimbrook::Slider1_Change() {
  if (Slider1.Value() > dtBlockStart.UpperBound()) return;
  strStartTime = system_.dates.Format(dtBlockStart[Slider1.Value()]);
  Slider1.SetToolTip(strStartTime);
  ShowRange();
}

void frmTrimbrook::Slider2_Scroll() {
  if (Slider2.Value() < Slider1.Value()) RefuseMove(Slider2, Slider1, kEndBeforeStart);
  Slider2_Change();
}

void frmTrimbrook::Slider2_Change() {
  if (Slider2.Value() > dtBlockEnd.UpperBound()) return;
  strEndTime = system_.dates.Format(dtBlockEnd[Slider2.Value()]);
  Slider2.SetToolTip(strEndTime);
  ShowRange();
}

void frmTrimbrook::RefuseMove(forms::Slider& slider, const forms::Slider& other,
                              const char* message) {
  // A thumb that is still held would follow the mouse on its way to the box's button.
  slider.EndDrag();
  ShowMessage(message);
  slider.SetValue(other.Value());
}

void frmTrimbrook::ShowRange() {
  Text5.SetText(strStartTime + "----" + strEndTime);
  Text4.SetText(std::to_string(SizeMB({Slider1.Value(), Slider2.Value()})));
}

void frmTrimbrook::Calendar1_Click() {
  strCal1Date = DateTextOf(Calendar1);
}

void frmTrimbrook::Calendar1_MonthChange() {
  KeepDayOfMonth(Calendar1, strCal1Date, intCal1Day);
}

void frmTrimbrook::Calendar2_Click() {
  strCal2Date = DateTextOf(Calendar2);
}

void frmTrimbrook::Calendar2_MonthChange() {
  KeepDayOfMonth(Calendar2, strCal2Date, intCal2Day);
}

/// Another page of a calendar keeps the chosen day of the month; where the month has no such day,
/// the second is chosen.
void frmTrimbrook::KeepDayOfMonth(forms::MonthCalendar& calendar, std::string& dateText,
                                  std::int16_t& rememberedDay) {
  if (const auto before = system_.dates.Parse(dateText))
    rememberedDay = static_cast<std::int16_t>(CalendarDay(*before).day);
  calendar.SetDay(2);
  calendar.SetDay(rememberedDay);
  dateText = DateTextOf(calendar);
}

std::string frmTrimbrook::DateTextOf(const forms::MonthCalendar& calendar) {
  return system_.dates.Format(DateOf(calendar.Value()));
}

void frmTrimbrook::CheckCTRS_Click() {
  const bool custom = CheckCTRS.Value();
  const int before = place().Top();
  if (custom) place().MoveBy(-layout::kExpandedRise);
  place().SetHeight(custom ? layout::kExpandedHeight : layout::kCompactHeight);
  Apply(custom ? layout::kExpanded : layout::kCompact, *this);
  if (custom)
    rise_ = before - place().Top();
  else
    place().MoveBy(rise_);
}

void frmTrimbrook::Command5_Click() {
  if (Text1.Text().empty()) {
    ShowMessage(main_text::kNoSource);
    return;
  }
  const std::int64_t start = SecondsOf(Calendar1, UpDownH, UpDownM, UpDownS);
  const std::int64_t end = SecondsOf(Calendar2, UpDown1, UpDown2, UpDown3);
  if (const char* refusal = TimeRangeRefusal(start, end)) {
    ShowMessage(refusal);
    ResetRange();
    return;
  }
  const BlockRange range = BlocksOfTimeRange(system_.dates, start, end);
  Slider1.SetValue(range.first);
  Slider2.SetValue(range.last);
}

void frmTrimbrook::Command6_Click() {
  ResetRange();
}

/// Back to the whole source, or to today when there is none.
void frmTrimbrook::ResetRange() {
  if (Text2.Text().empty()) {
    ShowToday();
    for (forms::UpDown* part : {&UpDownH, &UpDownM, &UpDownS, &UpDown1, &UpDown2, &UpDown3})
      part->SetValue(0);
  } else {
    ShowCustomDates(dtBlockStart[1], dtBlockEnd[dtBlockEnd.UpperBound()]);
    ShowCustomTimes();
  }
  Slider1.SetValue(Slider1.Min());
  Slider2.SetValue(Slider2.Max());
}

void frmTrimbrook::ShowToday() {
  const platform::Date today = DateOf(forms::Today());
  ShowCustomDates(today, today);
}

void frmTrimbrook::ShowCustomDates(platform::Date start, platform::Date end) {
  strCal1Date = system_.dates.Format(start);
  strCal2Date = system_.dates.Format(end);
  Calendar1.SetValue(CalendarDay(start));
  Calendar2.SetValue(CalendarDay(end));
  // Stands where the platform cannot read its own text of a date.
  intCal1Day = static_cast<std::int16_t>(Calendar1.Value().day);
  intCal2Day = static_cast<std::int16_t>(Calendar2.Value().day);
}

void frmTrimbrook::ShowCustomTimes() {
  constexpr int kHour = 1;
  constexpr int kMinute = 2;
  constexpr int kSecond = 3;
  const platform::Date start = dtBlockStart[1];
  const platform::Date end = dtBlockEnd[dtBlockEnd.UpperBound()];
  UpDownH.SetValue(ClockPart(start, kHour));
  UpDownM.SetValue(TimePart(system_.dates, start, kMinute).value_or(0));
  UpDownS.SetValue(TimePart(system_.dates, start, kSecond).value_or(0));
  UpDown1.SetValue(ClockPart(end, kHour));
  UpDown2.SetValue(TimePart(system_.dates, end, kMinute).value_or(0));
  UpDown3.SetValue(TimePart(system_.dates, end, kSecond).value_or(0));
}

/// Tells in the tool tips of the custom times which ones Confirm takes.
void frmTrimbrook::ShowAllowedTimes() {
  const auto show = [&](const OneBased<platform::Date>& times,
                        std::initializer_list<forms::Control*> fields) {
    const std::string text = Text1.Text().empty()
                                 ? ""
                                 : "From " + system_.dates.Format(times[1]) + " to " +
                                       system_.dates.Format(times[times.UpperBound()]);
    for (forms::Control* field : fields) field->SetToolTip(text);
  };
  show(dtBlockStart, {&Calendar1, &Text8, &Text9, &Text10, &UpDownH, &UpDownM, &UpDownS});
  show(dtBlockEnd, {&Calendar2, &Text11, &Text12, &Text13, &UpDown1, &UpDown2, &UpDown3});
}
