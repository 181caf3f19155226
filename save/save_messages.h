#pragma once

#include <string>
#include <vector>

#include "save/operations.h"

/// What the user is told about a save.

/// The messages that have one text.
namespace save_text {
inline constexpr char kReadError[] = "Error reading file ...";
inline constexpr char kWriteError[] = "Error writing file ...";
inline constexpr char kNotValid[] = "This file is not a valid source file!";
inline constexpr char kNoImages[] =
    "The selected cameras have no images in the selected time range!";
inline constexpr char kNoSpace[] = "There is not enough space on the disk for the selected file!";
inline constexpr char kTooLarge[] =
    "The selected disk cannot hold files of 4 GB or more. Please select another disk or a shorter "
    "time range!";
}  // namespace save_text

/// That a file could not be read, or written, and why, as far as that is known.
std::string MessageOfReading(const platform::Failure& why);
std::string MessageOfWriting(const platform::Failure& why);

/// A message and the title of its box.
struct SaveMessage {
  std::string text;
  bool isOnChoice = false;  ///< It is about what the user has chosen, not about files and disks.
};

/// All that is told of a save, one box after the other: what damage to the recording has cost,
/// unless the save has ended before that was certain, and why it has not ended as wished.
std::vector<SaveMessage> MessagesOf(const SaveResult& result);
