#pragma once

#include <memory>

#include "platform/date_text.h"
#include "platform/desktop.h"
#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/files.h"
#include "platform/registry.h"

/// What Windows gives for each interface to the outside world.
namespace platform {

std::unique_ptr<DateText> MakeWindowsDateText();
std::unique_ptr<Desktop> MakeWindowsDesktop();
std::unique_ptr<Drives> MakeWindowsDrives();
std::unique_ptr<FileNames> MakeWindowsFileNames();
std::unique_ptr<Files> MakeWindowsFiles();
std::unique_ptr<Registry> MakeWindowsRegistry();

}  // namespace platform
