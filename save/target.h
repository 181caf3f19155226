#pragma once

#include <optional>
#include <string>

#include "capture/source_file.h"
#include "platform/platform.h"
#include "save/operations.h"
#include "storage/new_file.h"

/// The path that a new file is to have, and how its writing ends.

/// Why a new file may not take this path; none when it may. It may not when what stands there must
/// not go, or is the open source itself, under whatever name.
std::optional<platform::Failure> WhyNotThere(platform::Core& system, const SourceFile& source,
                                             const std::string& targetPath);

/// How a save has ended, as far as its file goes.
SaveResult EndOfWriting(const NewFile& file);
/// How a save has ended that its source has failed.
SaveResult EndOfReading(const SourceFile& source);
