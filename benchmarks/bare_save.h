#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "save/camera_index.h"

/// What a chosen-camera save cannot do without: reading the lists and the chosen images, those that
/// follow each other in one read, and writing these images' bytes in whole blocks.
class BareSave {
 public:
  /// Works out the reads of a save of the cameras in `cameras` from the blocks of an index that
  /// begins with the recording's first.
  BareSave(const CameraIndex& index, std::int32_t cameras);

  /// Does the reads and writes. Ends the program when one fails.
  void Run(platform::Files& files, const std::string& source, const std::string& target) const;

 private:
  void AddImage(std::int64_t offset, std::uint32_t bytes);

  using Reads = std::vector<std::pair<std::int64_t, std::uint32_t>>;  ///< Offset and bytes.
  Reads lists_;
  Reads images_;
};
