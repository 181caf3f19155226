#pragma once

#include "platform/failure.h"
#include "platform/windows/win32.h"

namespace platform {

/// What an error of the system's means to the user.
Failure FailureOf(DWORD error);

/// Whether an error says that the file system, or this system, does not know what it was asked.
bool MeansUnknown(DWORD error);

}  // namespace platform
