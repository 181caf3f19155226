#pragma once

#include <string>

#include "platform/platform.h"
#include "save/operations.h"
#include "save/save_progress.h"

/// What every save consists of: a target path that is made free, and an end that the user is
/// told.

/// How a save ends, and the message that goes with it, if any.
struct SaveEnd {
  SaveOutcome outcome = SaveOutcome::kSaved;
  const char* message = nullptr;
};

inline constexpr SaveEnd kSaveDone = {SaveOutcome::kSaved};
inline constexpr SaveEnd kSaveCancelled = {SaveOutcome::kCancelled};
constexpr SaveEnd SaveFailed(const char* message) {
  return {SaveOutcome::kFailed, message};
}

/// Shows how a save has ended. Must come after its files are closed and what is half done is
/// removed: a box may stay up for hours, and nothing may depend on its being answered.
SaveOutcome ShowSaveEnd(SaveProgress& progress, const SaveEnd& end);

/// Whether a range of blocks (from 1, both ends included) has any.
bool HasBlocks(std::int32_t firstBlock, std::int32_t lastBlock);

/// Deletes the file that has the target's name, if there is one. False when that fails, when the
/// file is hidden or a system file, when it is the open source itself, under whatever name, or when
/// the path can be no file's.
bool ClearTarget(platform::Platform& system, SaveProgress& progress, const std::string& targetPath);

/// Deletes a file that the save has made.
void RemoveOwnFile(platform::FileNames& names, const std::string& path);
