#include "save/save_state.h"

namespace mdlSave {

std::int32_t lngCamSelLow = 0;
std::int32_t lngCamSelHigh = 0;
bool blnStartSave = false;
bool blnSomeCameras = false;
bool blnSaving = false;

}  // namespace mdlSave
