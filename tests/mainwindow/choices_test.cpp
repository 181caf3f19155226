#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "capture/capture_time.h"
#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "mainwindow/calendar_day.h"
#include "mainwindow/camera_choice.h"
#include "mainwindow/file_kind.h"
#include "mainwindow/time_range.h"
#include "save/save_state.h"
#include "tests/support/fake_dates.h"

using namespace mdlFileProcessing;

namespace {

/// A source whose block i starts at `starts[i - 1]` and ends at `ends[i - 1]`.
class TimeRange : public testing::Test {
 protected:
  void Blocks(const std::vector<std::int32_t>& starts, const std::vector<std::int32_t>& ends) {
    dtBlockStart.Redimension(starts.size());
    dtBlockEnd.Redimension(ends.size());
    for (int i = 1; i <= dtBlockStart.UpperBound(); ++i) {
      dtBlockStart[i] = DateOfSeconds(dates_, starts[static_cast<std::size_t>(i) - 1]);
      dtBlockEnd[i] = DateOfSeconds(dates_, ends[static_cast<std::size_t>(i) - 1]);
    }
  }
  void ExpectBlocks(std::int64_t start, std::int64_t end, std::int32_t first, std::int32_t last) {
    ASSERT_EQ(TimeRangeRefusal(start, end), nullptr);
    const BlockRange range = BlocksOfTimeRange(dates_, start, end);
    EXPECT_EQ(range.first, first) << start << " to " << end;
    EXPECT_EQ(range.last, last) << start << " to " << end;
  }

  FakeDates dates_;
};

TEST_F(TimeRange, KeepsTheBlocksThatTheTimesFallInto) {
  Blocks({1000, 1100, 1200}, {1099, 1199, 1299});
  ExpectBlocks(1000, 1299, 1, 3);
  ExpectBlocks(1099, 1100, 1, 2);
  ExpectBlocks(1100, 1199, 2, 2);
  ExpectBlocks(1150, 1200, 2, 3);
  ExpectBlocks(1200, 1201, 3, 3);
}

TEST_F(TimeRange, RefusesTimesOutsideTheBlocksTimes) {
  Blocks({1000, 1100, 1200}, {1099, 1199, 1299});
  const auto outside = [](const std::string& which) {
    return "The " + which +
           " Time you selected falls outside the time range of the sorce file. Please select a "
           "new time!";
  };
  EXPECT_EQ(TimeRangeRefusal(999, 1200), outside("Start"));
  EXPECT_EQ(TimeRangeRefusal(1201, 1299), outside("Start"));
  EXPECT_EQ(TimeRangeRefusal(1000, 1098), outside("End"));
  EXPECT_EQ(TimeRangeRefusal(1000, 1300), outside("End"));
  EXPECT_EQ(TimeRangeRefusal(1150, 1150),
            std::string("The Start Time should be earlier than the End Time!"));
}

TEST_F(TimeRange, HoldsAllThatOverlapsWhereTheClockWasSetBack) {
  // The last block that starts by 1500 is the third; the first that ends at 5000 or later is the
  // second.
  Blocks({1000, 5000, 1100, 2000}, {4999, 5999, 1199, 6000});
  ExpectBlocks(1500, 5000, 1, 4);
  // Two passes over the same time: the last block that starts by 30 is one of the second pass.
  Blocks({0, 20, 40, 60, 80, 0, 20, 40, 60, 80}, {19, 39, 59, 79, 99, 19, 39, 59, 79, 100});
  ExpectBlocks(30, 79, 2, 9);
  // Nothing holds this time.
  Blocks({0, 90, 5, 95}, {10, 100, 20, 110});
  ExpectBlocks(30, 40, 2, 3);
}

TEST_F(TimeRange, ComparesWhatTheTextsShow) {
  for (const auto style : {FakeDates::Style::kGerman, FakeDates::Style::kUnreadable}) {
    dates_.style = style;
    Blocks({1000, 1100}, {1099, 1199});
    ExpectBlocks(1100, 1101, 2, 2);
  }
}

TEST(SizeMB, CountsBothEndsInEitherOrder) {
  EXPECT_EQ(SizeMB({3, 3}), 2);
  EXPECT_EQ(SizeMB({1, 100}), 200);
  EXPECT_EQ(SizeMB({5, 2}), 8);
}

TEST(CalendarDay, IsTheDayOnWhichADateLies) {
  using std::chrono::year;
  const auto leapDay = year(2004) / 2 / 29;
  EXPECT_EQ(DateOfDay(leapDay), DateOf(2004, 2, 29));
  EXPECT_EQ(DayOfDate(DateOf(2004, 2, 29, 23, 59, 59)), leapDay);
  EXPECT_EQ(DayOfDate(DateOf(1892, 1, 18, 12)), year(1892) / 1 / 18);
}

TEST(FileKind, IsToldByTheLastThreeLetters) {
  EXPECT_TRUE(file_kind::IsNameOf20D("C:\\a.20d"));
  EXPECT_TRUE(file_kind::IsNameOf20D("C:\\a20D"));
  EXPECT_FALSE(file_kind::IsNameOf20D("C:\\a.20D.60D"));
  EXPECT_FALSE(file_kind::IsNameOf20D("0D"));
  EXPECT_EQ(file_kind::SourceFilter(),
            "JPEG2000 Image Sequences (*.20D)|*.20D|Wavelet Image Sequences (*.60D)|*.60D");
}

class Cameras : public testing::Test {
 protected:
  void Blocks(std::uint8_t type, const std::vector<std::int32_t>& low,
              const std::vector<std::int32_t>& high = {}) {
    bytBlockStatus = type;
    Fill(lngCamMask, low);
    Fill(lngCamMaskAlt, high);
  }
  static void Fill(OneBased<std::int32_t>& masks, const std::vector<std::int32_t>& values) {
    masks.Redimension(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) masks[static_cast<int>(i) + 1] = values[i];
  }
  void ExpectChoice(std::uint32_t enabled, std::uint32_t ticked, SelectionMode mode,
                    std::int32_t low, std::int32_t high) {
    EXPECT_EQ(ChooseCameras(enabled, ticked), mode);
    EXPECT_EQ(mdlSave::lngCamSelLow, low);
    EXPECT_EQ(mdlSave::lngCamSelHigh, high);
  }
};

TEST_F(Cameras, AreAvailableWhenAnyBlockHasThem) {
  Blocks(format::kType30, {1, 4, 0x8000}, {0xFFFF});  // The second masks are another source's.
  EXPECT_EQ(CameraCount(), 16);
  EXPECT_EQ(AvailableCameras(), 0x8005U);
  Blocks(format::kType20, {1, 4}, {1, 0x8000});
  EXPECT_EQ(CameraCount(), 32);
  EXPECT_EQ(AvailableCameras(), 0x80010005U);
}

TEST_F(Cameras, CountWhenTickedAndEnabled) {
  Blocks(format::kType60, {});
  const std::uint32_t unused = 0xFFFF0000;  // Boxes that do not show are enabled and ticked.
  ExpectChoice(unused | 5, 0xFFFFFFFF, kAllCameras, 5, 0);
  ExpectChoice(unused | 5, 4, kSomeCameras, 4, 0);
  ExpectChoice(unused | 5, unused | 2, kNoCamera, 0, 0);
  ExpectChoice(unused, 0xFFFFFFFF, kNoCamera, 0, 0);
  Blocks(format::kType20, {});
  ExpectChoice(0x10005, 0x10000, kSomeCameras, 0, 1);
  ExpectChoice(0x80010005, 0xFFFFFFFF, kAllCameras, 5, 0x8001);
}

}  // namespace
