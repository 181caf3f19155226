#pragma once

#include "capture/source_file.h"
#include "platform/platform.h"
#include "save/operations.h"
#include "storage/new_file.h"

/// The path that a new file is to have, and how its writing ends.

/// Asks for the path of a new file: `kSaved`, or why it may not have it. It may not when what
/// stands there must not go, or is the open source itself, under whatever name.
SaveResult AskForTarget(platform::Core& system, const SourceFile& source, const SaveJob& job,
                        NewFile& file);

/// Whether there is room for a new file of so many bytes at the least: `kSaved`, or why not. A disc
/// that is written in place is asked by whoever knows what goes there, and a disk that does not
/// tell is tried.
SaveEnd RoomForNew(platform::Core& system, const SaveJob& job, std::int64_t bytes);

/// How a save has ended, as far as its file goes.
SaveResult EndOfWriting(const NewFile& file);
/// How a save has ended that its source has failed.
SaveResult EndOfReading(const SourceFile& source);
