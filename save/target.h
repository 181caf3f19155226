#pragma once

#include <string>

#include "capture/source_file.h"
#include "platform/platform.h"
#include "save/operations.h"
#include "save/save_progress.h"
#include "storage/new_file.h"

/// The path that a new file is to have, and how its writing ends.

/// Whether a new file may take this path. It may not when the path can be no file's, or when what
/// has it is hidden, a system file, or the open source itself, under whatever name.
bool MayTakePlace(platform::Core& system, const SourceFile& source, const std::string& targetPath);

/// Deletes the file that has the target's name, if there is one. False when that fails, or a new
/// file may not take its place, which is asked first.
bool ClearTarget(platform::Core& system, const SourceFile& source, const std::string& targetPath);

/// How a save has ended, as far as its file goes.
SaveResult EndOfWriting(const NewFile& file);
