// The main window's target file, and the start of what writes it.

#include <cmath>
#include <cstdlib>

#include "capture/mdlFileProcessing.h"
#include "cdwizard/frmSaveToCD.h"
#include "cdwizard/system_helpers.h"
#include "forms/dialogs.h"
#include "mainwindow/camera_choice.h"
#include "mainwindow/file_kind.h"
#include "mainwindow/frmTrimbrook.h"
#include "mainwindow/messages.h"
#include "save/frmSaveFile.h"
#include "save/save_state.h"

using mdlFileProcessing::bln20D;

namespace {

constexpr char kNoTarget[] = "Please select the target file first!";
constexpr char kNoSpace[] = "There is not enough space on the disk for the selected file!";
constexpr char kNoCameraChosen[] = "Please select at least one camera!";
constexpr char kHighCamerasGo[] =
    "Cameras 17 to 32 cannot be kept when only some cameras are selected. Do you want to continue?";

}  // namespace

void frmTrimbrook::Command2_Click() {
  if (Text1.Text().empty()) {
    ShowMessage(main_text::kNoSource);
    return;
  }
  Text6.SetText("");
  const auto path =
      forms::AskSaveFile(window(), {"Save New File", file_kind::Filter(bln20D),
                                    system_.programFolder, file_kind::Ending(bln20D)});
  if (IsClosed() || !path || path->empty()) return;
  Text6.SetText(*path);
  Text7.SetText(std::to_string(std::llround(GetDiskFreeMB(system_.names, *path))));
}

void frmTrimbrook::Command3_Click() {
  if (const char* refusal = SaveRefusal()) {
    ShowMessage(refusal);
    return;
  }
  EnsureAvailabilityChecked();
  if (!AcceptSelection()) return;
  if (mdlSave::blnSomeCameras && mdlSave::lngCamSelHigh != 0 && !AskYesNo(kHighCamerasGo)) return;
  mdlSave::blnStartSave = true;
  frmSaveFile progress(system_, *this);
  progress.ShowModal(*this);
}

void frmTrimbrook::Command7_Click() {
  if (Text1.Text().empty()) {
    ShowMessage(main_text::kNoSource);
    return;
  }
  if (!AcceptSelection()) return;
  frmSaveToCD wizard(system_, *this);
  wizard.ShowModal(*this);
}

const char* frmTrimbrook::SaveRefusal() {
  if (Text1.Text().empty()) return main_text::kNoSource;
  if (Text6.Text().empty()) return kNoTarget;
  if (SizeEstimateMB() > std::atoll(Text7.Text().c_str())) return kNoSpace;
  return nullptr;
}

/// Takes the cameras as they are ticked; false when there is none, which is told.
bool frmTrimbrook::AcceptSelection() {
  switch (GetCameraSelection()) {
    case kAllCameras:
      mdlSave::blnSomeCameras = false;
      return true;
    case kSomeCameras:
      mdlSave::blnSomeCameras = true;
      return true;
    default:
      ShowMessage(kNoCameraChosen);
      return false;
  }
}
