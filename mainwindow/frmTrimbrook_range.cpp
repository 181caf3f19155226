// The main window's time range: the two sliders, and the custom range that moves them.

#include "capture/capture_time.h"
#include "mainwindow/frmTrimbrook.h"

namespace {

constexpr char kStartPastEnd[] = "The Start Time should be earlier than the Ending Time!";
constexpr char kNotConfirmed[] =
    "The custom time range has been changed but not confirmed. Do you want to confirm it now?";
constexpr char kEndBeforeStart[] = "The End Time should be later than the Start Time!";

}  // namespace

std::int64_t RangeEnd::Seconds() const {
  std::int64_t ofDay = 0;
  for (forms::UpDown* part : time) ofDay = ofDay * 60 + part->Value();
  return SecondsOfDate(DateOfDay(calendar.Value())) + ofDay;
}

void frmTrimbrook::Slider_Scroll(RangeEnd& moved, const RangeEnd& other) {
  if (Slider1.Value() > Slider2.Value()) {
    // A thumb that is still held would follow the mouse on its way to the box's button.
    moved.slider.EndDrag();
    ShowMessage(&moved == &start_ ? kStartPastEnd : kEndBeforeStart);
    moved.slider.SetValue(other.slider.Value());
  }
  Slider_Change(moved);
}

void frmTrimbrook::Slider_Change(RangeEnd& end) {
  // The index of a source that was closed stays until another one is read.
  if (Text1.Text().empty() || end.slider.Value() > end.blockTimes.UpperBound()) return;
  end.strTime = system_.dates.Format(end.blockTimes[end.slider.Value()]);
  end.slider.SetToolTip(end.strTime);
  Text5.SetText(start_.strTime + "----" + end_.strTime);
  Text4.SetText(std::to_string(SizeMB({Slider1.Value(), Slider2.Value()})));
}

void frmTrimbrook::Calendar_Click(RangeEnd& end) {
  end.strCalDate = system_.dates.Format(DateOfDay(end.calendar.Value()));
}

/// Another page of a calendar keeps the chosen day of the month; where the month has no such day,
/// the second is chosen.
void frmTrimbrook::Calendar_MonthChange(RangeEnd& end) {
  if (const auto before = system_.dates.Parse(end.strCalDate))
    end.intCalDay = DayOfDate(*before).day();
  end.calendar.SetDay(std::chrono::day(2));
  end.calendar.SetDay(end.intCalDay);
  Calendar_Click(end);
}

void frmTrimbrook::CheckCTRS_Click() {
  const bool custom = CheckCTRS.Value();
  const int before = place().Top();
  if (custom)
    place().SetHeight(layout::kExpandedHeight, -layout::kExpandedRise);
  else
    place().SetHeight(layout::kCompactHeight, rise_);
  Apply(custom ? layout::kExpanded : layout::kCompact, *this);
  if (custom) rise_ = before - place().Top();
}

/// Moves the sliders to the custom range; false when it is refused.
bool frmTrimbrook::Confirm() {
  if (!RequireSource()) return false;
  const std::int64_t start = start_.Seconds();
  const std::int64_t end = end_.Seconds();
  if (const char* refusal = TimeRangeRefusal(start, end)) {
    ShowMessage(refusal);
    ResetRange();
    return false;
  }
  NoteConfirmed();
  const BlockRange range = BlocksOfTimeRange(start, end);
  Slider1.SetValue(range.first);
  Slider2.SetValue(range.last);
  return true;
}

void frmTrimbrook::NoteConfirmed() {
  for (RangeEnd* end : {&start_, &end_}) end->confirmed = end->Seconds();
}

/// Asks about custom times that were typed but not confirmed; false when the save is to wait.
bool frmTrimbrook::SettleCustomTimes() {
  if (!CheckCTRS.Value()) return true;
  if (start_.Seconds() == start_.confirmed && end_.Seconds() == end_.confirmed) return true;
  const std::optional<bool> wish = AskYesNoCancel(kNotConfirmed);
  if (!wish) return false;
  if (!*wish || Confirm()) return true;
  Calendar1.SetFocus();
  return false;
}

/// Back to the whole source, or to today when there is none.
void frmTrimbrook::ResetRange() {
  if (Text2.Text().empty()) {
    ShowToday();
    for (const RangeEnd* end : {&start_, &end_})
      for (forms::UpDown* part : end->time) part->SetValue(0);
  } else {
    ShowCustomTime(start_, start_.blockTimes[1]);
    ShowCustomTime(end_, end_.blockTimes[end_.blockTimes.UpperBound()]);
  }
  NoteConfirmed();
  Slider1.SetValue(Slider1.Min());
  Slider2.SetValue(Slider2.Max());
}

void frmTrimbrook::ShowToday() {
  const platform::Date today = DateOfDay(forms::Today());
  ShowCustomDate(start_, today);
  ShowCustomDate(end_, today);
}

void frmTrimbrook::ShowCustomDate(RangeEnd& end, platform::Date date) {
  end.calendar.SetValue(DayOfDate(date));
  end.strCalDate = system_.dates.Format(date);
  // Stands where the platform cannot read its own text of a date.
  end.intCalDay = end.calendar.Value().day();
}

void frmTrimbrook::ShowCustomTime(RangeEnd& end, platform::Date date) {
  constexpr int kHour = 1;
  constexpr int kMinute = 2;
  constexpr int kSecond = 3;
  ShowCustomDate(end, date);
  end.time[0]->SetValue(ClockPart(date, kHour));
  end.time[1]->SetValue(TimePart(system_.dates, date, kMinute).value_or(0));
  end.time[2]->SetValue(TimePart(system_.dates, date, kSecond).value_or(0));
}

/// Tells in the tool tips of the custom times which ones Confirm takes.
void frmTrimbrook::ShowAllowedTimes() {
  for (const RangeEnd* end : {&start_, &end_}) {
    const auto& times = end->blockTimes;
    const std::string text = Text1.Text().empty()
                                 ? ""
                                 : "From " + system_.dates.Format(times[1]) + " to " +
                                       system_.dates.Format(times[times.UpperBound()]);
    end->calendar.SetToolTip(text);
    for (forms::UpDown* field : end->time) field->SetToolTip(text);
  }
}
