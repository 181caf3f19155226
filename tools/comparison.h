#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "tools/recording_reader.h"

namespace tools {

/// The earliest and the latest of some times.
struct Times {
  std::int64_t first = INT64_MAX;
  std::int64_t last = INT64_MIN;

  bool IsEmpty() const { return first > last; }
  void Add(std::int64_t stamp);
};

/// Images that can be read.
struct Images {
  std::int64_t count = 0;
  std::set<std::string> titles;  ///< All that they show.
  Times times;
};

/// What some blocks or images of a recording hold.
struct Contents {
  Images all;
  std::map<int, Images> cameras;  ///< The same by camera, from 1 on.
  std::int64_t damagedImages = 0;
  int damagedBlocks = 0;

  void Add(const StoredImage& image);
  /// Adds a block and its images.
  void Add(const StoredBlock& block);
};

/// Where a part is looked for, and what it is to hold; what is left open is found.
struct Narrowing {
  std::optional<Range> blocks;           ///< Of the source.
  std::optional<std::set<int>> cameras;  ///< From 1 on; the part was rebuilt from their images.
};

/// What a comparison of a part with its source has found.
struct Comparison {
  FileFacts source, part;
  std::string difference;  ///< Empty when the part is just what the source holds there.
  // All that follows is about a part without a difference.
  bool rebuilt = false;   ///< From images; otherwise of whole blocks.
  Range blocks = {0, 0};  ///< Of the source.
  /// Of the source. What is damaged in it a part of whole blocks holds as well, and a rebuilt one
  /// not.
  Contents contents;
  // What a rebuilt part does not hold either.
  std::int64_t largeImages = 0;  ///< They do not fit into a new block.
  std::int64_t lostSounds = 0;   ///< Of blocks of type 0x20.
  std::int64_t longTitles = 0;   ///< Images with further bytes behind the title.
};

/// What is saved of an image: all bytes before its tail, of which a zero at the end is padding (one
/// byte less keeps the image in as many sectors), and no sound of block type 0x20.
Image Saved(const StoredBlock& block, const StoredImage& image);

/// Finds the place of a part in its source and holds all of it against that. A part of whole blocks
/// has them byte for byte. One that was rebuilt from images has all of its cameras' images in a run
/// of blocks, in order, with their bytes, times, titles, texts, flags and sound, in blocks whose
/// trailers agree with their images. Shows a bar where a person looks on.
Comparison Compare(const std::string& source, const std::string& part, const Narrowing& narrowing,
                   bool withSums);

}  // namespace tools
