#include "save/time_left.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

TEST(TimeLeft, IsToldInWordsThatAUserWouldChoose) {
  const struct {
    std::chrono::seconds left;
    const char* text;
  } cases[] = {
      {5s, "A few seconds left"},     {6s, "About 10 seconds left"},
      {55s, "About 55 seconds left"}, {56s, "About 1 minute left"},
      {90s, "About 2 minutes left"},  {89min + 29s, "About 89 minutes left"},
      {90min, "About 2 hours left"},  {149min, "About 2 hours left"},
  };
  for (const auto& [left, text] : cases) EXPECT_EQ(TimeLeftText(left), text) << left.count();
}

TEST(TimeLeft, FollowsTheSpeedOfTheLastWhile) {
  TimeLeft left;
  EXPECT_EQ(left.At(100ms, 0.01), "");
  EXPECT_EQ(left.At(4'100ms, 0.05), "");
  EXPECT_EQ(left.At(10'100ms, 0.1), "About 2 minutes left");
  // Ten times slower from here on.
  for (int second = 20; second <= 60; ++second)
    left.At(second * 1'000ms, 0.2 + (second - 20) * 0.001);
  EXPECT_EQ(left.At(61s, 0.241), "About 13 minutes left");
}

}  // namespace
