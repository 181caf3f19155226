#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "platform/date_text.h"

/// The rules of the custom time range, over the source index. Times are capture time stamps.

/// A run of blocks, from 1, both ends included.
struct BlockRange {
  std::int32_t first = 0;
  std::int32_t last = 0;
};

/// Megabytes of a run of blocks, whichever end comes first.
std::int32_t SizeMB(BlockRange range);

namespace range_text {
inline constexpr char kNotEarlier[] = "The Start Time should be earlier than the End Time!";
}  // namespace range_text

/// Why a start and an end time cannot be kept, as a message; null when they can.
const char* TimeRangeRefusal(std::int64_t start, std::int64_t end);

/// The blocks of a time range that is not refused: from the last block that starts at or before
/// `start` to the first block that ends at or after `end`. Where the recorder's clock was set back
/// in between, so that these are in the wrong order: all blocks from the first to the last one
/// whose time overlaps the range; when there is none, the two the other way round.
BlockRange BlocksOfTimeRange(std::int64_t start, std::int64_t end);

/// The same for a time range of which any part may lie beyond the recording: times there are taken
/// as its ends. None when the recording holds nothing of the range.
std::optional<BlockRange> BlocksOfClippedRange(std::int64_t start, std::int64_t end);

/// The date on which a day begins.
platform::Date DateOfDay(std::chrono::year_month_day day);
/// The day on which a date lies.
std::chrono::year_month_day DayOfDate(platform::Date date);
