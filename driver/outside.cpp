#include "driver/outside.h"

#include <windows.h>

#include <stdexcept>

#include "driver/files.h"

namespace driver {

void RunOutside(const std::string& command) {
  std::string line = "Z:\\bin\\sh -c \"cd \\\"$WINEPREFIX\\\" && " + command + "\"";
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process))
    throw std::runtime_error("Cannot run " + command);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

// Goes on without a picture in the end: it may be that of a place where one waited in vain.
void SaveScreenshot(const std::string& name) {
  constexpr int kMostPolls = 5000;
  RunOutside("drive_c/screenshot 'drive_c/pictures/" + name + "'");
  for (int polls = 0; polls < kMostPolls && !FileExists(kPictures + name + ".png"); ++polls)
    Sleep(2);
}

}  // namespace driver
