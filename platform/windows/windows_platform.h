#pragma once

#include "platform/platform.h"
#include "platform/steady_clock.h"
#include "platform/windows/windows_date_text.h"
#include "platform/windows/windows_desktop.h"
#include "platform/windows/windows_drives.h"
#include "platform/windows/windows_file_names.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_registry.h"

namespace platform {

/// Keeps libraries outside the system's folder from being loaded from now on: what the program's
/// folder holds, into which anybody may have put it, is no library of ours.
void KeepToLibrariesOfTheSystem();

/// The outside world of this process. Made once, in `main`, it also keeps an empty drive from
/// raising a box of the system's.
class WindowsPlatform {
 public:
  WindowsPlatform();
  WindowsPlatform(const WindowsPlatform&) = delete;
  WindowsPlatform& operator=(const WindowsPlatform&) = delete;

  /// The bundle to hand down.
  Platform& bundle() { return bundle_; }

 private:
  WindowsFiles files_;
  WindowsFileNames names_;
  WindowsRegistry registry_;
  WindowsDesktop desktop_;
  WindowsDrives drives_;
  WindowsDateText dates_;
  SteadyClock clock_;
  Platform bundle_;
};

}  // namespace platform
