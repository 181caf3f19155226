#pragma once

#include <cstdint>

/// What the windows and the save operations tell each other.
namespace mdlSave {

/// Chosen cameras: bit i of `lngCamSelLow` is camera i + 1, of `lngCamSelHigh` camera i + 17.
extern std::int32_t lngCamSelLow;
extern std::int32_t lngCamSelHigh;
/// The progress window is to start a save when it opens.
extern bool blnStartSave;
/// Keep the chosen cameras only, instead of whole blocks.
extern bool blnSomeCameras;
/// A save is running; cleared to cancel it.
extern bool blnSaving;

}  // namespace mdlSave
