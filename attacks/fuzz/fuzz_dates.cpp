// Date texts both ways: stamps through the texts of every locale, and texts that no locale has.

#include <fuzzer/FuzzedDataProvider.h>

#include "attacks/fuzz/check.h"
#include "capture/capture_time.h"
#include "tests/support/fake_dates.h"

namespace {

/// A locale that says anything and reads anything.
class AnyDates : public platform::DateText {
 public:
  explicit AnyDates(FuzzedDataProvider& data) : data_(data) {}
  std::string Format(platform::Date) override { return data_.ConsumeRandomLengthString(40); }
  std::optional<platform::Date> Parse(const std::string&) override {
    if (data_.ConsumeBool()) return std::nullopt;
    return data_.ConsumeFloatingPoint<double>();
  }

 private:
  FuzzedDataProvider& data_;
};

void CheckStamp(FakeDates::Style style, std::int32_t seconds) {
  FakeDates dates(style);
  const platform::Date date = DateOfSeconds(dates, seconds);
  Demand(SecondsOfDate(date) == seconds, "a stamp comes back from its date");
  const std::int64_t ofDay = ((std::int64_t{seconds} % 86400) + 86400) % 86400;
  const auto hour = static_cast<int>(ofDay / 3600);
  const int half = hour >= 12 ? 12 : 0;
  const int shown = style == FakeDates::Style::kUs ? (hour + 11) % 12 + 1 + half : hour;
  Demand(TimePart(dates, date, 1) == shown, "hour");
  Demand(TimePart(dates, date, 2) == static_cast<int>(ofDay / 60 % 60), "minute");
  Demand(TimePart(dates, date, 3) == static_cast<int>(ofDay % 60), "second");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  CheckStamp(static_cast<FakeDates::Style>(data.ConsumeIntegralInRange(0, 3)),
             data.ConsumeIntegral<std::int32_t>());
  AnyDates dates(data);
  while (data.remaining_bytes() > 0) {
    const platform::Date date = DateOfSeconds(dates, data.ConsumeIntegral<std::int32_t>());
    SecondsOfDate(date);
    const int part = data.ConsumeIntegralInRange(-1, 5);
    const auto value = TimePart(dates, date, part);
    Demand(value.has_value() == (part >= 1 && part <= 3), "parts 1 to 3 have a value");
  }
  return 0;
}
