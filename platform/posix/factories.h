#pragma once

#include <memory>

#include "platform/file_names.h"
#include "platform/files.h"

/// What a POSIX system gives for the interfaces that saves need; paths are the system's own.
namespace platform {

std::unique_ptr<FileNames> MakePosixFileNames();
std::unique_ptr<Files> MakePosixFiles();

}  // namespace platform
