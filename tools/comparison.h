#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/numbers.h"

namespace tools {

/// What makes a saved file other than it should be.
class Difference : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Checks that `target` holds blocks `blocks` of `source`, byte for byte, and nothing else.
/// Returns the number of blocks; throws `Difference`.
int CompareBlocks(const std::string& source, const std::string& target,
                  const std::optional<Range>& blocks);

/// Checks that `target` was rebuilt from the images of `cameras` (from 1 on) of these blocks: all
/// of them, in order, with their bytes, times, titles, texts, flags and sound, in blocks whose
/// trailers agree with their images. Images of the source that cannot be read are left out.
/// Returns the number of images; throws `Difference`.
int CompareImages(const std::string& source, const std::string& target,
                  const std::vector<int>& cameras, const std::optional<Range>& blocks);

}  // namespace tools
