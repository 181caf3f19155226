// The main window's target file, and the start of what writes it.

#include <cmath>
#include <cstdlib>

#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "cdwizard/frmSaveToCD.h"
#include "cdwizard/system_helpers.h"
#include "forms/dialogs.h"
#include "mainwindow/file_kind.h"
#include "mainwindow/frmTrimbrook.h"
#include "platform/paths.h"
#include "save/camera_choice.h"
#include "save/frmSaveFile.h"
#include "save/save_messages.h"
#include "save/save_state.h"

using mdlFileProcessing::bln20D;

namespace {

constexpr char kNoTarget[] = "Please select the target file first!";
constexpr char kNoSpace[] = "There is not enough space on the disk for the selected file!";
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
  ShowFreeSpace();  // It may have changed since the target was chosen.
  if (const char* refusal = SaveRefusal()) {
    ShowMessage(refusal);
    return;
  }
  if (!AcceptSelection()) return;
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
  if (!RequireSource() || !AcceptSelection()) return;
  frmSaveToCD wizard(system_, *this);
  wizard.ShowModal(*this);
}

const char* frmTrimbrook::SaveRefusal() {
  if (Text6.Text().empty()) return kNoTarget;
  if (SizeEstimateMB() > std::atoll(Text7.Text().c_str())) return kNoSpace;
  // How large a file of some cameras gets, nobody knows before their images are counted.
  const std::uint64_t size = std::uint64_t{static_cast<std::uint32_t>(SizeEstimateMB())} << 20;
  if (size > system_.names.LargestFile(platform::FolderOf(TargetPath())) &&
      GetCameraSelection() != kSomeCameras)
    return save_text::kTooLarge;
  return nullptr;
}

/// Takes the cameras as they are ticked, over the whole range; false when they cannot be kept,
/// which is told, or are not to be.
bool frmTrimbrook::AcceptSelection() {
  if (!EnsureAvailabilityChecked()) return false;
  const std::int16_t mode = GetCameraSelection();
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
