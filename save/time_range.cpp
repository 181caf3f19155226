#include "save/time_range.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "capture/capture_time.h"
#include "capture/format.h"
#include "capture/mdlFileProcessing.h"

using mdlFileProcessing::dtBlockEnd;
using mdlFileProcessing::dtBlockStart;

namespace {

constexpr std::chrono::sys_days kDateOrigin = std::chrono::year(1899) / std::chrono::December / 30;
constexpr std::int32_t kBlockMB = format::kBlockSize / (1024 * 1024);

constexpr char kStartOutside[] =
    "The Start Time you selected falls outside the time range of the sorce file. Please select a "
    "new time!";
constexpr char kEndOutside[] =
    "The End Time you selected falls outside the time range of the sorce file. Please select a "
    "new time!";

bool IsWithin(std::int64_t seconds, const OneBased<platform::Date>& blockTimes) {
  return SecondsOfDate(blockTimes[1]) <= seconds &&
         seconds <= SecondsOfDate(blockTimes[blockTimes.UpperBound()]);
}

/// From the first to the last block, in the file's order, whose time overlaps the given one.
std::optional<BlockRange> BlocksOverlapping(std::int64_t from, std::int64_t to) {
  BlockRange range;
  for (std::int32_t i = 1; i <= dtBlockStart.UpperBound(); ++i) {
    if (SecondsOfDate(dtBlockStart[i]) > to || SecondsOfDate(dtBlockEnd[i]) < from) continue;
    if (range.first == 0) range.first = i;
    range.last = i;
  }
  if (range.first == 0) return {};
  return range;
}

}  // namespace

std::int32_t SizeMB(BlockRange range) {
  return (std::abs(range.first - range.last) + 1) * kBlockMB;
}

const char* TimeRangeRefusal(std::int64_t start, std::int64_t end) {
  if (!IsWithin(start, dtBlockStart)) return kStartOutside;
  if (!IsWithin(end, dtBlockEnd)) return kEndOutside;
  return start < end ? nullptr : range_text::kNotEarlier;
}

BlockRange BlocksOfTimeRange(std::int64_t start, std::int64_t end) {
  BlockRange range{dtBlockStart.UpperBound(), 1};
  while (range.first > 1 && SecondsOfDate(dtBlockStart[range.first]) > start) --range.first;
  while (range.last < dtBlockEnd.UpperBound() && SecondsOfDate(dtBlockEnd[range.last]) < end)
    ++range.last;
  if (range.first <= range.last) return range;
  return BlocksOverlapping(start, end).value_or(BlockRange{range.last, range.first});
}

std::optional<BlockRange> BlocksOfClippedRange(std::int64_t start, std::int64_t end) {
  if (!BlocksOverlapping(start, end)) return {};
  const platform::Date* starts = dtBlockStart.data();
  const platform::Date* ends = dtBlockEnd.data();
  const platform::Date first = *std::min_element(starts, starts + dtBlockStart.UpperBound());
  const platform::Date last = *std::max_element(ends, ends + dtBlockEnd.UpperBound());
  return BlocksOfTimeRange(std::max(start, SecondsOfDate(first)),
                           std::min(end, SecondsOfDate(last)));
}

platform::Date DateOfDay(std::chrono::year_month_day day) {
  return static_cast<double>((std::chrono::sys_days(day) - kDateOrigin).count());
}

std::chrono::year_month_day DayOfDate(platform::Date date) {
  return kDateOrigin + std::chrono::days(std::lround(std::floor(date)));
}
