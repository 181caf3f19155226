#pragma once

#include <cstdint>
#include <string>

#include "platform/files.h"

/// Which cameras a recording has and which of them are kept. In a set of cameras bit i is camera
/// i + 1.

/// The cameras that have images in the range whose availability was checked last.
std::uint32_t AvailableCameras();

/// The title of a camera's first image in the range that was checked last, whose first block is
/// `firstBlock`; empty when it has none, or cannot be read. One character a byte becomes UTF-8.
std::string FirstTitle(platform::Files& files, const std::string& path, std::int32_t firstBlock,
                       int camera);

/// How much of what is available is chosen.
enum SelectionMode : std::int16_t {
  kNoCamera = 0,
  kAllCameras = 1,   ///< Every available camera: whole blocks can be kept.
  kSomeCameras = 2,  ///< Some of them: the file must be rebuilt.
};

/// Keeps those of the ticked cameras that are enabled: sets `mdlSave::lngCamSelLow` and
/// `lngCamSelHigh`, and tells how much that is.
SelectionMode ChooseCameras(std::uint32_t enabled, std::uint32_t ticked);

/// Whether a disk has room for a file.
enum class Room {
  kEnough,
  kPerhaps,    ///< Of chosen cameras only the whole blocks' size is known, which is too large.
  kTooLittle,  ///< It has fewer megabytes free.
  kTooLarge,   ///< It holds no file of this size.
};

/// What is known of a save's room.
struct SpaceNeed {
  std::int32_t sizeMB;  ///< Of the whole blocks.
  std::int64_t freeMB;
  std::uint64_t largestFile;  ///< Bytes.
};

Room RoomFor(const SpaceNeed& need, SelectionMode mode);
