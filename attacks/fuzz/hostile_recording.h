#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/recording_builder.h"

/// A recording that a fuzzer's bytes describe: sound enough that a reader gets deep into it, then
/// damaged at some places, or at none.
class HostileRecording {
 public:
  explicit HostileRecording(FuzzedDataProvider& data);
  /// Keeps the buffer for the next recording; `bytes` must be as it was.
  ~HostileRecording();
  HostileRecording(const HostileRecording&) = delete;
  HostileRecording& operator=(const HostileRecording&) = delete;

  bool Is20D() const { return type_ == 0x60; }
  /// Whether its images are what `Images` says.
  bool IsSound() const { return sound_; }
  int Blocks() const { return blocks_; }
  /// The images of blocks `first` to `last` (from 1), those that a save can keep. An image without
  /// a tail in a block that lists no stamps has none.
  std::vector<TestImage> Images(int first, int last) const;

  std::string bytes;

 private:
  void AddBlock(FuzzedDataProvider& data, int block);
  TestImage NextImage(FuzzedDataProvider& data);
  /// Stores an image from a sector on and answers the first sector behind it.
  int Store(const TestImage& image, int block, int sector);
  void PutEntry(const TestImage& image, std::size_t trailer, int k, int sector);
  void PutHeader(FuzzedDataProvider& data, std::size_t trailer, int count);
  void Damage(FuzzedDataProvider& data);

  void Put(std::size_t offset, int width, std::uint32_t value);
  void PutBytes(std::size_t offset, const std::string& part);
  std::size_t TrailerOf(int block) const;

  int type_ = 0;
  int blocks_ = 0;
  bool sound_ = true;
  std::int32_t start_ = 0;  // Of the block that is being added.
  std::vector<std::pair<int, TestImage>> images_;
  std::vector<std::pair<std::size_t, std::size_t>> written_;  // Offset and length.
  std::vector<std::size_t> fields_;                           // Places that are worth damaging.
};
