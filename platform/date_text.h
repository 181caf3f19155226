#pragma once

#include <optional>
#include <string>

namespace platform {

/// A date with its time of day: days since 1899-12-30 00:00:00, the time as their fraction, also
/// before that day (a straight scale). Used to whole seconds; no time zone.
using Date = double;

inline constexpr int kSecondsPerDay = 86400;

/// The user's general date-time text: short date, a blank, long time, always both.
class DateText {
 public:
  virtual ~DateText() = default;

  /// The text of a date; empty when it cannot be shown.
  virtual std::string Format(Date date) = 0;
  /// The date that such a text shows, by the same locale; none when it cannot be read.
  virtual std::optional<Date> Parse(const std::string& text) = 0;
};

}  // namespace platform
