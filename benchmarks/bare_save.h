#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// What a chosen-camera save cannot do without: reading the lists and the chosen images, and
/// writing as many bytes as the new file has.
struct BareSave {
  /// Works out the reads of a save of the cameras in `cameras` from all blocks of a recording.
  BareSave(const std::string& source, std::int32_t cameras);

  void Run(const std::string& source, const std::string& target) const;

  std::vector<std::pair<std::int64_t, std::size_t>> reads;  ///< Offset and bytes.
  std::int64_t bytesToWrite = 0;
};
