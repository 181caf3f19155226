#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <string>
#include <vector>

#include "tools/block_builder.h"

/// A recording that a fuzzer's bytes describe, its blocks of whatever types: sound enough that a
/// reader gets deep into it, then damaged at some places, or at none.
class HostileRecording {
 public:
  /// An image as the recording holds it. Without a tail its title is what a reader makes of it.
  struct Given {
    int block;  ///< From 1 on.
    const tools::Layout* layout;
    tools::Image image;
  };

  explicit HostileRecording(FuzzedDataProvider& data);
  /// Keeps the buffer for the next recording.
  ~HostileRecording();
  HostileRecording(const HostileRecording&) = delete;
  HostileRecording& operator=(const HostileRecording&) = delete;

  bool Is20D() const { return is20D_; }
  /// Whether its images are what `images` says.
  bool IsSound() const { return sound_; }
  int Blocks() const { return static_cast<int>(layouts_.size()); }
  /// Whether the last block has a type of its kind.
  bool EndsWell() const { return endsWell_; }
  /// The images of all blocks whose type is known, in order.
  const std::vector<Given>& Images() const { return images_; }

  std::string bytes;

 private:
  void AddBlock(FuzzedDataProvider& data);
  void Damage(FuzzedDataProvider& data);
  void DamageBlock(FuzzedDataProvider& data, std::size_t block);

  bool is20D_;
  bool sound_ = true;
  bool endsWell_ = true;
  std::vector<const tools::Layout*> layouts_;  ///< Of the blocks.
  std::vector<Given> images_;
};
