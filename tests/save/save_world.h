#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "capture/mdlFileProcessing.h"
#include "save/save_messages.h"
#include "tests/save/fake_progress.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"

constexpr char kSource[] = "C:\\Recordings\\door.60D";
constexpr char kTarget[] = "C:\\Saved\\part.60D";

/// Chooses whole blocks instead of cameras.
constexpr std::uint32_t kWholeBlocks = 0;

/// Blocks with an image of camera 1, of which a new block holds one only, and one of camera 2 in
/// each.
inline std::string RecordingOf(int count) {
  std::vector<BlockPlan> blocks;
  for (int i = 0; i < count; ++i)
    blocks.push_back({.images = {{.camera = 0, .bytes = Picture(1200000, i)},
                                 {.camera = 1, .bytes = Picture(100, i)}}});
  return Recording(0x30, blocks);
}

/// A scanned recording of one block type, an old target, and a save of two blocks from the one to
/// the other.
struct SaveWorld {
  explicit SaveWorld(std::string recording = RecordingOf(2), int type = 0x30)
      : is20D(type == 0x60), source(std::move(recording)) {
    disk.Put(kSource, source);
    disk.Put(kTarget, "old");
    mdlFileProcessing::bln20D = is20D;
    mdlFileProcessing::ScanSourceFile(disk, kSource);
  }

  SaveEnd Run(std::uint32_t cameras, int first = 1, int last = 2) {
    job.firstBlock = first;
    job.lastBlock = last;
    using Mode = SaveJob::Mode;
    job.mode = cameras == kWholeBlocks ? Mode::kWholeBlocks : Mode::kChosenCameras;
    job.cameras = cameras;
    result = RunSave(world.system, progress, job);
    return result.end;
  }
  /// Ends the fault, so that it strikes no check of what it has done.
  Fault TakeFault() { return std::exchange(disk.fault, {}); }
  /// What is told of the save first, and last; empty for nothing.
  std::string ToldFirst() const {
    const auto messages = MessagesOf(result);
    return messages.empty() ? "" : messages.front().text;
  }
  std::string ToldEnd() const {
    const auto messages = MessagesOf(result);
    return messages.empty() ? "" : messages.back().text;
  }
  std::vector<tools::Image> Saved() const { return ImagesOf(disk.View(kTarget), is20D); }

  /// What holds however a save ends.
  void ExpectNothingLeft() {
    EXPECT_EQ(disk.OpenHandles(), 0u);
    EXPECT_EQ(disk.View(kSource), source);
    EXPECT_EQ(progress.hourglasses, 0);
    ExpectNoTemporary();
  }
  void ExpectNoTemporary() {
    for (const auto& [path, file] : disk.files) EXPECT_FALSE(path.ends_with(".tmp")) << path;
  }
  /// What holds when a save was refused before it has touched anything.
  void ExpectRefusal(const std::string& message) {
    EXPECT_THAT(progress.messages, testing::IsEmpty());
    EXPECT_EQ(ToldEnd(), message);
    EXPECT_EQ(disk.View(kTarget), "old");
    ExpectNothingLeft();
  }

  FakePlatform world;
  MemoryDisk& disk = world.disk;
  bool is20D;
  std::string source;
  SaveJob job = {.sourcePath = kSource, .targetPath = kTarget};
  FakeProgress progress;
  SaveResult result;
};
