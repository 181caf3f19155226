// The main window's target file, and the start of what writes it.

#include <cmath>
#include <cstdlib>

#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "cdwizard/frmSaveToCD.h"
#include "forms/dialogs.h"
#include "mainwindow/file_kind.h"
#include "mainwindow/frmTrimbrook.h"
#include "save/camera_choice.h"
#include "save/frmSaveFile.h"
#include "save/save_messages.h"
#include "save/save_state.h"
#include "storage/system_helpers.h"

using mdlFileProcessing::bln20D;

namespace {

constexpr char kNoTarget[] = "Please select the target file first!";
constexpr char kMayNotFit[] = "The selected file may not fit on the disk. Do you want to continue?";
constexpr char kNoCameraChosen[] = "Please select at least one camera!";
constexpr char kNoHighCameras[] =
    "Cameras 17 to 32 cannot be kept when only some cameras are selected.";

}  // namespace

void frmTrimbrook::ChooseTarget() {
  if (!RequireSource()) return;
  Text6.SetText("");
  const auto path =
      forms::AskSaveFile(window(), {"Save New File", file_kind::Filter(bln20D),
                                    system_.programFolder, format::VariantOf(bln20D).ending});
  if (IsClosed() || !path || path->empty()) return;
  Text6.SetText(*path);
  ShowFreeSpace();
}

void frmTrimbrook::ShowFreeSpace() {
  if (!Text6.Text().empty())
    Text7.SetText(std::to_string(std::llround(GetDiskFreeMB(system_.names, TargetPath()))));
}

void frmTrimbrook::SaveFile() {
  if (!RequireSource()) return;
  if (Text6.Text().empty()) {
    ShowMessage(kNoTarget);
    return;
  }
  if (!AcceptRange() || !AcceptRoom() || !AcceptCameras()) return;
  mdlSave::blnStartSave = true;
  frmSaveFile progress(system_, *this);
  progress.ShowModal(*this);
  if (!IsClosed()) ShowFreeSpace();
}

void frmTrimbrook::SaveAskingForTarget() {
  const bool needsTarget = !Text1.Text().empty() && Text6.Text().empty();
  if (needsTarget) ChooseTarget();
  const bool refused = needsTarget && Text6.Text().empty();
  if (!IsClosed() && !refused) SaveFile();
}

void frmTrimbrook::SaveToCd() {
  if (!RequireSource() || !AcceptRange() || !AcceptCameras()) return;
  frmSaveToCD wizard(system_, *this);
  wizard.ShowModal(*this);
}

/// Settles what the range is, and knows its cameras then; false when the save is to wait.
bool frmTrimbrook::AcceptRange() {
  return SettleCustomTimes() && EnsureAvailabilityChecked();
}

/// Whether the target's disk has room, as far as that is known; tells or asks otherwise.
bool frmTrimbrook::AcceptRoom() {
  ShowFreeSpace();  // It may have changed since the target was chosen.
  switch (RoomFor({.sizeMB = SizeEstimateMB(),
                   .freeMB = std::atoll(Text7.Text().c_str()),
                   .largestFile = system_.names.LargestFile(system_.names.FolderOf(TargetPath()))},
                  GetCameraSelection())) {
    case Room::kEnough:
      return true;
    case Room::kPerhaps:
      return AskYesNo(kMayNotFit, false);
    case Room::kTooLittle:
      ShowMessage(save_text::kNoSpace);
      return false;
    case Room::kTooLarge:
      ShowMessage(save_text::kTooLarge);
      return false;
  }
  return false;
}

/// Takes the cameras as they are ticked; false when they cannot be kept, which is told, or are not
/// to be.
bool frmTrimbrook::AcceptCameras() {
  const SelectionMode mode = GetCameraSelection();
  if (mode == kNoCamera) ShowMessage(kNoCameraChosen);
  if (mode == kNoCamera || (mode == kSomeCameras && !AcceptHighCameras())) return false;
  mdlSave::blnSomeCameras = mode == kSomeCameras;
  return true;
}

/// Whether a file of some cameras is wanted, though it will have none of the ticked cameras 17
/// to 32.
bool frmTrimbrook::AcceptHighCameras() {
  if (mdlSave::lngCamSelHigh == 0) return true;
  if (mdlSave::lngCamSelLow == 0) {
    ShowMessage(kNoHighCameras);
    return false;
  }
  return AskYesNo(kNoHighCameras + std::string(" Do you want to continue?"), false);
}
