#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tools/block_builder.h"

/// Deterministic image bytes that end in a byte other than zero; `seed` tells images apart.
std::string Picture(int bytes, int seed = 1);

namespace tools {
/// So that a failed comparison tells which image it was.
std::ostream& operator<<(std::ostream& out, const Image& image);
}  // namespace tools

/// Builds recordings in memory as a recorder would store them, with the tools' own idea of the
/// layout: what the program writes is compared with it.
class RecordingBuilder {
 public:
  /// `type`: the block-type byte of all blocks, 0x00, 0x10, 0x20, 0x30 or (a .20D file) 0x60.
  explicit RecordingBuilder(int type) : type_(static_cast<std::uint8_t>(type)) {}

  /// Begins a new block.
  RecordingBuilder& Block() {
    blocks_.emplace_back();
    return *this;
  }
  /// Adds an image to the current block.
  RecordingBuilder& Image(const tools::Image& image) {
    blocks_.back().images.push_back(image);
    return *this;
  }
  /// Titles of the block's cameras, from camera 0 on, in the blocks that keep a table of them.
  RecordingBuilder& Titles(const std::vector<std::string>& titles) {
    blocks_.back().titles = titles;
    return *this;
  }
  /// Sets the start and end stamp of the current block; otherwise they follow its images.
  RecordingBuilder& Stamps(std::int32_t start, std::int32_t end) {
    blocks_.back().stamps = {start, end};
    return *this;
  }

  /// The recording: whole blocks of 2 MiB.
  std::string Bytes() const;
  /// Offset of the trailer inside a block.
  int TrailerOffset() const { return Layout()->trailer; }

 private:
  const tools::Layout* Layout() const { return tools::FindLayout(type_, type_ == 0x60); }

  struct BlockPlan {
    std::vector<tools::Image> images;
    std::vector<std::string> titles;
    std::optional<std::pair<std::int32_t, std::int32_t>> stamps;
  };

  std::uint8_t type_;
  std::vector<BlockPlan> blocks_;
};
