#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// What a chosen-camera save cannot do without: reading the lists and the chosen images, those that
/// follow each other in one read, and writing these images' bytes in whole blocks.
struct BareSave {
  /// Works out the reads of a save of the cameras in `cameras` from all blocks of a recording.
  BareSave(const std::string& source, std::int32_t cameras);

  void Run(const std::string& source, const std::string& target) const;

  using Reads = std::vector<std::pair<std::int64_t, std::size_t>>;  ///< Offset and bytes.
  Reads lists;
  Reads images;

 private:
  void AddImage(std::int64_t offset, std::size_t bytes);
};
