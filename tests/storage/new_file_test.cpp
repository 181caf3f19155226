#include "storage/new_file.h"

#include <gtest/gtest.h>

#include "storage/flush_pace.h"
#include "tests/support/fake_platform.h"

namespace {

constexpr std::uint32_t kBlock = 2097152;

TEST(FlushPace, WritesWhatTheMediumTakesInATenthOfASecond) {
  const struct {
    const char* medium;
    double bytesPerSecond;
    std::uint32_t slice;  // What it settles at.
  } kCases[] = {{"a disk in memory", 1e12, 64u << 20}, {"a fast disk", 4e8, 32u << 20},
                {"a hard disk", 1e8, 8u << 20},        {"a stick", 1e7, 512u << 10},
                {"a worn stick", 2e6, 128u << 10},     {"a floppy disk", 2e4, 64u << 10}};
  for (const auto& c : kCases) {
    FlushPace pace;
    std::uint32_t slice = 0;
    for (int flushes = 0; flushes < 20; ++flushes) {
      slice = 0;
      for (bool due = false; !due;) {
        const std::uint32_t piece = pace.Piece(kBlock);
        due = pace.Wrote(piece);
        slice += piece;
      }
      const std::chrono::duration<double> took(slice / c.bytesPerSecond);
      pace.Flushed(std::chrono::duration_cast<FlushPace::Duration>(took));
    }
    EXPECT_EQ(slice, c.slice) << c.medium;
  }
}

// A slow medium gets a block in parts and is waited for after each; a fast one is before the next
// slice. What is given up meanwhile is written no further.
TEST(NewFile, AwaitsEachFlushWhileMessagesRun) {
  struct SlowDisk : MemoryDisk {
    std::promise<platform::Flushed> answer;
    std::future<platform::Flushed> Flush(FileHandle) override { return (answer = {}).get_future(); }
  };
  constexpr int kNever = 99;
  const std::string block(kBlock, 'x');
  for (const bool flushes : {true, false})
    for (const int givenUpAt : {kNever, 6}) {
      PlatformWith<SlowDisk> world;
      int breaths = 0;
      NewFile file(world.system, NewFile::Place::kTemporary, [&] {
        if (++breaths % 4 == 0 || breaths == givenUpAt)
          world.disk.answer.set_value({.done = flushes});
        return breaths < givenUpAt;
      });
      EXPECT_TRUE(file.Create("C:\\Trimbrook\\new.60D"));
      for (const int breathsThen : {8, 9, 12}) {
        EXPECT_EQ(file.Append(block.data(), kBlock), flushes && breathsThen < givenUpAt);
        EXPECT_EQ(breaths, std::min(breathsThen, flushes ? givenUpAt : 4));
      }
      EXPECT_EQ(file.Finish(), flushes && givenUpAt == kNever);
    }
}

// What is on the medium under its own name is not sure when its close has failed; a file that was
// renamed before is.
TEST(NewFile, FailsWithItsCloseUnderItsOwnName) {
  struct BadDisk : MemoryDisk {
    bool Close(platform::FileHandle file) override { return !MemoryDisk::Close(file); }
  };
  for (const auto place : {NewFile::Place::kOwnName, NewFile::Place::kTemporary}) {
    PlatformWith<BadDisk> world;
    NewFile file(world.system, place, [] { return true; });
    EXPECT_TRUE(file.Create("C:\\Trimbrook\\new.60D") && file.Append("x", 1));
    EXPECT_EQ(file.Finish(), place == NewFile::Place::kTemporary);
  }
}

// A device takes every byte and keeps none.
TEST(NewFile, IsNoDevice) {
  struct Device : MemoryDisk {
    std::optional<platform::FileIdentity> Identity(platform::FileHandle) override { return {}; }
  };
  PlatformWith<Device> world;
  EXPECT_FALSE(NewFile(world.system, NewFile::Place::kOwnName, [] { return true; }).Create("NUL"));
  EXPECT_EQ(world.disk.OpenHandles(), 0u);
}

}  // namespace
