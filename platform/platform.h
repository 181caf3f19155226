#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/date_text.h"
#include "platform/desktop.h"
#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/files.h"
#include "platform/registry.h"

namespace platform {

/// The outside world as one bundle of its narrow interfaces; handed down from `main`, so that
/// tests hand down their own.
struct Platform {
  Files& files;
  FileNames& names;
  Registry& registry;
  Desktop& desktop;
  Drives& drives;
  DateText& dates;
  Clock& clock;
  std::string programFolder;  ///< The folder of the running program, without a last backslash.
  std::string programName;    ///< The executable's name without folder and ending.
};

}  // namespace platform
