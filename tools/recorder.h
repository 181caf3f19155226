#pragma once

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/block_builder.h"
#include "tools/damage.h"
#include "tools/numbers.h"

namespace tools {

/// What a recording is to hold.
struct Wishes {
  std::vector<const Layout*> layouts;  ///< Of the blocks, in turn.
  BlockStyle style = {.noise = true};
  int blocks = 3;
  std::vector<int> cameras = {1, 2, 3, 4};  ///< From 1 on, in the order in which they record.
  std::vector<std::string> titles;          ///< Of camera i + 1 at i; "CAM n" beyond the end.
  std::int64_t start = 1930478400;          ///< Time stamp of the first image: 2021-03-04 12:00:00.
  double step = 1;                          ///< Seconds from image to image.
  bool tails = true;                   ///< Write tails in the block types where they are a choice.
  int mostImages = INT_MAX;            ///< Images a block at the most.
  Range size = {4000, 40000};          ///< Bytes of an image.
  bool fill = false;                   ///< Let the last image of a block reach to the trailer.
  int textEvery = 0;                   ///< Each so-manieth image has a text; 0: none.
  Range textLength = {1, kTextBytes};  ///< Bytes of a text.
  int soundEvery = 0;                  ///< Each so-manieth image has sound; 0: none.
  Range soundSectors = {1, 31};        ///< Sectors of sound.
  int flagsEvery = 0;   ///< Each so-manieth image has flags, 1 to 3 in turn; 0: none.
  bool sparse = false;  ///< Blocks outside `dense` hold one image that is a hole.
  std::vector<Range> dense;
  std::vector<Damage> damages;

  /// The title of a camera, from 0 on.
  std::string TitleOf(int camera) const {
    const auto index = static_cast<std::size_t>(camera);
    return index < titles.size() ? titles[index] : "CAM " + std::to_string(camera + 1);
  }
};

/// Writes a recording and answers the number of its images. Throws `std::runtime_error` when that
/// fails.
std::uint32_t Record(const Wishes& wishes, const std::string& path);

}  // namespace tools
