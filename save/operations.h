#pragma once

#include <cstdint>
#include <string>

#include "platform/platform.h"
#include "save/save_progress.h"

/// The operations that write the chosen part of a recording into a new capture file. Block numbers
/// count from 1, both ends included.

/// How a save has ended. Anything but `kSaved` leaves no file that this save has made.
enum class SaveOutcome { kSaved, kCancelled, kFailed };

/// The messages of the save operations.
namespace save_text {
inline constexpr char kReadError[] = "Error reading file ...";
inline constexpr char kWriteError[] = "Error writing file ...";
inline constexpr char kNotValid[] = "This file is not a valid source file!";
inline constexpr char kNoImages[] =
    "The selected cameras have no images in the selected time range!";
}  // namespace save_text

/// Copies whole blocks, unchanged, into a temporary file in the program's folder and moves it onto
/// the target when it is complete.
SaveOutcome SaveBlockRange(platform::Platform& system, SaveProgress& progress,
                           const std::string& sourcePath, const std::string& targetPath,
                           std::int32_t firstBlock, std::int32_t lastBlock);

/// Rebuilds a capture file from the images of the chosen cameras (`mdlSave::lngCamSelLow`). Must
/// run right after `IndexBlockRange` over the same range.
SaveOutcome SaveChosenCameras(platform::Platform& system, SaveProgress& progress,
                              const std::string& sourcePath, const std::string& targetPath,
                              std::int32_t firstBlock, std::int32_t lastBlock);
