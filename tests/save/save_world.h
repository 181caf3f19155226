#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "capture/mdlFileProcessing.h"
#include "save/save_messages.h"
#include "save/save_state.h"
#include "tests/save/fake_progress.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"

constexpr char kSource[] = "C:\\Recordings\\door.60D";
constexpr char kTarget[] = "C:\\Saved\\part.60D";
constexpr std::size_t kBlock = 2097152;

/// Chooses whole blocks instead of cameras.
constexpr std::int32_t kWholeBlocks = 0;

/// A scanned recording of one block type, an old target, and a save from the one to the other.
struct SaveWorld {
  SaveWorld(int type, std::string recording, const Fault& fault = {})
      : is20D(type == 0x60), source(std::move(recording)) {
    disk.Put(kSource, source);
    disk.Put(kTarget, "old");
    mdlFileProcessing::bln20D = is20D;
    mdlFileProcessing::ScanSourceFile(disk, world.dates, kSource);
    disk.fault = fault;
  }

  SaveEnd Run(int first, int last, std::int32_t cameras, const std::string& target = kTarget,
              const std::string& from = kSource) {
    const auto mode =
        cameras == kWholeBlocks ? SaveJob::Mode::kWholeBlocks : SaveJob::Mode::kChosenCameras;
    mdlSave::lngCamSelLow = cameras;
    result = RunSave(world.system, progress, {from, target, first, last, mode});
    return result.end;
  }
  /// Ends the fault, so that it strikes no check of what it has done.
  Fault TakeFault() { return std::exchange(disk.fault, {}); }
  std::vector<tools::Image> Saved() const { return ImagesOf(disk.View(kTarget), is20D); }

  /// What holds however a save ends.
  void ExpectNothingLeft() {
    EXPECT_EQ(disk.OpenHandles(), 0u);
    EXPECT_EQ(mdlFileProcessing::hSourceFile, platform::FileHandle::kInvalid);
    EXPECT_EQ(disk.View(kSource), source);
    EXPECT_EQ(progress.hourglasses, 0);
    ExpectNoTemporary();
  }
  void ExpectNoTemporary() {
    for (const std::string& path : disk.Paths()) EXPECT_FALSE(path.ends_with(".tmp")) << path;
  }
  /// What holds when a save was refused before it has touched anything.
  void ExpectRefusal(const std::string& message) {
    EXPECT_THAT(progress.messages, testing::IsEmpty());
    EXPECT_EQ(MessageOfEnd(result).text, message);
    EXPECT_EQ(disk.View(kTarget), "old");
    ExpectNothingLeft();
  }

  FakePlatform world;
  MemoryDisk& disk = world.disk;
  bool is20D;
  std::string source;
  FakeProgress progress;
  SaveResult result;
};
