#include "save/time_left.h"

#include <cstdint>

namespace {

using std::chrono::seconds;

/// Work that is over by then needs no words, and what is told sooner is a guess.
constexpr seconds kFirstWords{5};
/// How long a speed is measured before it is measured anew.
constexpr seconds kSpan{15};

std::string About(std::int64_t count, const char* unit) {
  return "About " + std::to_string(count) + " " + unit + (count == 1 ? "" : "s") + " left";
}

}  // namespace

std::string TimeLeft::At(Time now, double done) {
  if (!begun_) since_ = next_ = {now, done};
  begun_ = true;
  if (now - next_.time >= kSpan) {
    since_ = next_;
    next_ = {now, done};
  }
  const Time spent = now - since_.time;
  const double gained = done - since_.done;
  if (spent < kFirstWords || gained <= 0) return "";
  const std::chrono::duration<double> left = spent * ((1 - done) / gained);
  return TimeLeftText(std::chrono::ceil<seconds>(left));
}

std::string TimeLeftText(seconds left) {
  constexpr std::int64_t kMinute = 60;
  constexpr std::int64_t kHour = 60 * kMinute;
  const std::int64_t count = left.count();
  if (count <= 5) return "A few seconds left";
  if (count <= 55) return About((count + 4) / 5 * 5, "second");
  if (count < 90 * kMinute) return About((count + kMinute / 2) / kMinute, "minute");
  return About((count + kHour / 2) / kHour, "hour");
}
