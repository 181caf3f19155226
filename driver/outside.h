#pragma once

#include <string>

namespace driver {

/// Has the system below Wine run a shell command in the folder of the prefix, and does not wait for
/// it: what it changes, it changes without asking Windows.
void RunOutside(const std::string& command);
/// Leaves a picture of the screen under this name.
void SaveScreenshot(const std::string& name);

}  // namespace driver
