#pragma once

#include <string>

namespace driver {

/// Leaves a picture of the screen under this name, without ending. Waits a while for the screen to
/// stand still: programs draw when they have nothing else to do.
void SaveScreenshot(const std::string& name);

}  // namespace driver
