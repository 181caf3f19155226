#include <gtest/gtest.h>

#include <string>

#include "capture/capture_time.h"
#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "save/camera_choice.h"
#include "save/save_state.h"
#include "save/time_range.h"
#include "tests/save/save_world.h"

using namespace mdlFileProcessing;

namespace {

using Seconds = std::vector<std::int32_t>;

class TimeRange : public testing::Test {
 protected:
  TimeRange() { Blocks({1000, 1100, 1200}, {1099, 1199, 1299}); }

  /// A source whose block i starts at `starts[i - 1]` and ends at `ends[i - 1]`.
  void Blocks(const Seconds& starts, const Seconds& ends) {
    dtBlockStart.Redimension(starts.size());
    dtBlockEnd.Redimension(ends.size());
    for (std::size_t i = 0; i < starts.size(); ++i) {
      dtBlockStart[static_cast<int>(i) + 1] = DateOfSeconds(starts[i]);
      dtBlockEnd[static_cast<int>(i) + 1] = DateOfSeconds(ends[i]);
    }
  }
  void ExpectBlocks(std::int64_t start, std::int64_t end, std::int32_t first, std::int32_t last) {
    ASSERT_EQ(TimeRangeRefusal(start, end), nullptr);
    const BlockRange range = BlocksOfTimeRange(start, end);
    EXPECT_EQ(std::pair(range.first, range.last), std::pair(first, last)) << start << ", " << end;
  }
};

TEST_F(TimeRange, KeepsTheBlocksThatTheTimesFallInto) {
  ExpectBlocks(1000, 1299, 1, 3);
  ExpectBlocks(1099, 1100, 1, 2);
  ExpectBlocks(1100, 1199, 2, 2);
  ExpectBlocks(1150, 1200, 2, 3);
  ExpectBlocks(1200, 1201, 3, 3);
}

TEST_F(TimeRange, RefusesTimesOutsideTheBlocksTimes) {
  const std::string outside =
      " Time you selected falls outside the time range of the sorce file. Please select a new "
      "time!";
  EXPECT_EQ(TimeRangeRefusal(999, 1200), "The Start" + outside);
  EXPECT_EQ(TimeRangeRefusal(1201, 1299), "The Start" + outside);
  EXPECT_EQ(TimeRangeRefusal(1000, 1098), "The End" + outside);
  EXPECT_EQ(TimeRangeRefusal(1000, 1300), "The End" + outside);
  EXPECT_STREQ(TimeRangeRefusal(1150, 1150), "The Start Time should be earlier than the End Time!");
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

/// Recorders' clocks run on: what reads as a negative number is later.
TEST_F(TimeRange, GoesOnAfter2028) {
  constexpr std::int32_t kMost = 0x7FFFFFFF, kLeast = -kMost - 1;
  constexpr std::int64_t kNext = std::int64_t{kMost} + 1;
  Blocks({kMost - 99, kLeast, kLeast + 100}, {kMost, kLeast + 99, -1});
  ExpectBlocks(kNext - 50, kNext + 99, 1, 2);
  ExpectBlocks(kNext + 99, kNext + 100, 2, 3);
  EXPECT_EQ(TimeRangeRefusal(kNext, 0xFFFFFFFF), nullptr);
  EXPECT_NE(TimeRangeRefusal(kNext, 0x100000000), nullptr);
}

TEST(SizeMB, CountsBothEndsInEitherOrder) {
  EXPECT_EQ(SizeMB({3, 3}), 2);
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
  for (const char* name : {"C:\\a.20d", "C:\\a20D"}) EXPECT_TRUE(format::IsNameOf20D(name));
  for (const char* name : {"a.20D.60D", "0D"}) EXPECT_FALSE(format::IsNameOf20D(name));
}

void Fill(OneBased<std::int32_t>& masks, const Seconds& values) {
  masks.Redimension(values.size());
  std::copy(values.begin(), values.end(), masks.data());
}

TEST(Room, IsThatOfWholeBlocksUnlessTheFileIsRebuilt) {
  constexpr std::uint64_t kMost = 0xFFFFFFFF;
  const struct {
    SpaceNeed need;
    Room ofAll, ofSome;
  } cases[] = {{{200, 200, kMost}, Room::kEnough, Room::kEnough},
               {{200, 199, kMost}, Room::kTooLittle, Room::kPerhaps},
               {{4094, 5000, kMost}, Room::kEnough, Room::kEnough},
               {{4096, 5000, kMost}, Room::kTooLarge, Room::kEnough}};
  for (const auto& [need, ofAll, ofSome] : cases) {
    EXPECT_EQ(RoomFor(need, kAllCameras), ofAll) << need.sizeMB;
    EXPECT_EQ(RoomFor(need, kSomeCameras), ofSome) << need.sizeMB;
    EXPECT_EQ(RoomFor(need, kNoCamera), ofAll) << need.sizeMB;
  }
}

TEST(Cameras, AreAvailableWhenAnyBlockHasThem) {
  Fill(lngCamMask, {1, 4, 0x8000});
  Fill(lngCamMaskAlt, {1, 0x8000});
  lngCameraCount = 16;  // The second masks are another source's.
  EXPECT_EQ(AvailableCameras(), 0x8005U);
  lngCameraCount = 32;
  EXPECT_EQ(AvailableCameras(), 0x80018005U);
}

// From the first block that has the camera, of an image that is whole.
TEST(Cameras, AreTitledByTheirFirstImage) {
  const std::string recording =
      Recording(0x30, {{.images = {{.camera = 0, .bytes = Picture(900), .title = "Door"}}},
                       {.images = {{.camera = 0, .bytes = Picture(900), .title = "Later"},
                                   {.camera = 2, .bytes = Picture(900), .title = "Caf\xE9"},
                                   {.camera = 3, .bytes = Picture(900), .title = ""}}}});
  SaveWorld world(recording);
  ASSERT_EQ(CheckAvailability(world.disk, kSource, 1, 2).end, ReadEnd::kDone);
  const auto title = [&](int camera, int first) {
    return FirstTitle(world.disk, kSource, first, camera);
  };
  EXPECT_EQ(title(0, 1), "Door");
  EXPECT_EQ(title(2, 1), "Caf\xC3\xA9");
  EXPECT_EQ(title(3, 1), "Camera 4");
  EXPECT_EQ(title(1, 1), "");
  ASSERT_EQ(CheckAvailability(world.disk, kSource, 2, 2).end, ReadEnd::kDone);
  EXPECT_EQ(title(0, 2), "Later");
  EXPECT_EQ(FirstTitle(world.disk, "C:\\none.60D", 2, 0), "");
}

TEST(Cameras, CountWhenTickedAndEnabled) {
  const auto choose = [](std::uint32_t enabled, std::uint32_t ticked) {
    const SelectionMode mode = ChooseCameras(enabled, ticked);
    return std::tuple(mode, mdlSave::lngCamSelLow, mdlSave::lngCamSelHigh);
  };
  constexpr std::uint32_t kAll = 0xFFFFFFFF;
  constexpr std::uint32_t kUnused = 0xFFFF0000;  // Boxes that do not show are enabled and ticked.
  lngCameraCount = 16;
  EXPECT_EQ(choose(kUnused | 5, kAll), std::tuple(kAllCameras, 5, 0));
  EXPECT_EQ(choose(kUnused | 5, 4), std::tuple(kSomeCameras, 4, 0));
  EXPECT_EQ(choose(kUnused | 5, kUnused | 2), std::tuple(kNoCamera, 0, 0));
  EXPECT_EQ(choose(kUnused, kAll), std::tuple(kNoCamera, 0, 0));
  lngCameraCount = 32;
  EXPECT_EQ(choose(0x10005, 0x10000), std::tuple(kSomeCameras, 0, 1));
  EXPECT_EQ(choose(0x80010005, kAll), std::tuple(kAllCameras, 5, 0x8001));
}

}  // namespace
