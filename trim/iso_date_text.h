#pragma once

#include "platform/date_text.h"

namespace trim {

/// Date-time text that is the same for every user and machine: "2021-03-04 12:01:30".
class IsoDateText : public platform::DateText {
 public:
  /// Of a date that a capture time stamp can mean.
  std::string Format(platform::Date date) override;
  /// A "T" may stand for the blank.
  std::optional<platform::Date> Parse(const std::string& text) override;
};

}  // namespace trim
