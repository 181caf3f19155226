#pragma once

#include <string>

#include "platform/date_text.h"

namespace platform {

/// Date-time text by the user's settings in Windows.
///
/// Reading a text takes the system far longer than writing one, and the scan of a recording reads
/// each text right after it was written. So what was written last is not read again where it is
/// known how the settings' texts read back: days are tried one by one, and each hour, minute and
/// second once.
class WindowsDateText : public DateText {
 public:
  std::string Format(Date date) override;
  std::optional<Date> Parse(const std::string& text) override;

 private:
  /// A date and its text, and the day's part of that.
  struct Written {
    Date date = 0;
    std::wstring day;
    std::string text;
  };

  bool ReadsBack(const Written& written);
  bool DayReadsBack(const Written& written);
  bool ClockReadsBack(const std::wstring& day, Date date);

  Written last_;
  Written triedDay_;
  bool dayReadsBack_ = false;
  std::wstring triedClock_;  ///< The format of the time for which `clockReadsBack_` holds.
  bool clockReadsBack_ = false;
};

}  // namespace platform
