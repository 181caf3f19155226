#pragma once

#include <memory>

#include "platform/platform.h"
#include "platform/steady_clock.h"
#include "platform/windows/factories.h"

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
  const std::unique_ptr<Files> files_ = MakeWindowsFiles();
  const std::unique_ptr<FileNames> names_ = MakeWindowsFileNames();
  const std::unique_ptr<Registry> registry_ = MakeWindowsRegistry();
  const std::unique_ptr<Desktop> desktop_ = MakeWindowsDesktop();
  const std::unique_ptr<Drives> drives_ = MakeWindowsDrives();
  const std::unique_ptr<DateText> dates_ = MakeWindowsDateText();
  SteadyClock clock_;
  Platform bundle_;
};

}  // namespace platform
