#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/date_text.h"
#include "platform/desktop.h"
#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/registry.h"

namespace platform {

/// What whoever reads and saves recordings needs of the outside world.
struct Core {
  Files& files;
  FileNames& names;
  DateText& dates;
  Clock& clock;
  std::string programFolder;  ///< The running program's, with a last backslash for a root only.
};

/// The outside world as one bundle of its narrow interfaces; handed down from `main`, so that
/// tests hand down their own.
struct Platform : Core {
  Drives& fso;
  Registry& registry;
  Desktop& desktop;
  std::string programName;  ///< The executable's name without folder and ending.

  /// Path of a file that lies beside the program.
  std::string Beside(const std::string& name) const { return PathIn(programFolder, name); }
};

}  // namespace platform
