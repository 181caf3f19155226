#pragma once

#include <chrono>
#include <memory>

#include "forms/control.h"

namespace forms {

/// A calendar day; Windows knows years from 1601.
using Day = std::chrono::year_month_day;

/// Today by the machine's clock.
Day Today();

/// A month's page on which one day is chosen.
/// Events, not for the program's own acts: kClick when a day was picked (a day of a neighbouring
/// month included), kMonthChange or kYearChange when the page was turned, which moves the chosen
/// day into the new month.
class MonthCalendar : public Control {
 public:
  using Control::Control;

  /// The day that the calendar shows as chosen, by whatever means.
  Day Value() const;
  void SetValue(Day day);
  /// Chooses another day of the shown month; one that it does not have changes nothing.
  void SetDay(std::chrono::day day);

 protected:
  const wchar_t* WindowClass() const override { return MONTHCAL_CLASSW; }
  // Without the line that goes to today: recordings are older, and it would be a third way to pick.
  DWORD WindowStyle() const override { return WS_BORDER | MCS_NOTODAY; }
  void Created() override;
  void LaidOut() override;
  LRESULT OnNotify(const NMHDR& header) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  struct DeleteFont {
    using pointer = HFONT;
    void operator()(HFONT font) const { DeleteObject(font); }
  };

  /// Takes the day that the calendar shows now, and tells what has happened if it is another one.
  void Take(bool picked);

  std::unique_ptr<HFONT, DeleteFont> smallFont_;  ///< Null while the form's own fits.
  Day value_ = Today();                           ///< The day that was told last.
  UINT handled_ = 0;  ///< The message of the user's that is being handled, 0 for none.
};

}  // namespace forms
