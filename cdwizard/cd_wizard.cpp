#include "cdwizard/cd_wizard.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "cdwizard/file_name.h"
#include "cdwizard/wizard_flow.h"
#include "platform/paths.h"
#include "platform/runtime_error.h"
#include "storage/system_helpers.h"

namespace {

constexpr std::size_t kMostDrives = 3;
// The key's odd name is the one that the player's set-up writes.
constexpr char kPlayerKey[] = "strOrrisdeckSpecial";
constexpr char kPlayerValue[] = "OrrisdeckPath";

// Free megabytes of the volume, halves rounded to even.
std::int32_t WholeFreeMB(platform::FileNames& names, const std::string& path) {
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(std::nearbyint(GetDiskFreeMB(names, path)), kMost));
}

/// Throws away, when it goes, what was pressed or clicked while it lived: nothing was pumped, and
/// it would land on what is shown by then.
class DeafTime {
 public:
  explicit DeafTime(WizardView& view) : view_(view) {}
  ~DeafTime() { view_.DiscardInput(); }
  DeafTime(const DeafTime&) = delete;
  DeafTime& operator=(const DeafTime&) = delete;

 private:
  WizardView& view_;
};

/// Files are being copied for as long as it lives, however that ends.
class CopyTime {
 public:
  CopyTime(bool& isCopying, WizardView& view) : isCopying_(isCopying), view_(view) {
    isCopying_ = true;
    view_.SetCopying(true);
  }
  ~CopyTime() {
    view_.SetCopying(false);
    isCopying_ = false;
  }
  CopyTime(const CopyTime&) = delete;
  CopyTime& operator=(const CopyTime&) = delete;

 private:
  bool& isCopying_;
  WizardView& view_;
};

}  // namespace

CdWizard::CdWizard(platform::Platform& system, MainWindowView& mainWindow, WizardView& view)
    : system_(system),
      mainWindow_(mainWindow),
      view_(view),
      software_(system),
      copy_(system, mainWindow, view) {}

void CdWizard::Load() {
  const std::vector<std::string> drives = system_.fso.CdRomDrives();
  if (drives.size() > kMostDrives) throw RuntimeError::SubscriptOutOfRange(system_.programName);
  if (drives.empty()) {
    view_.ShowApplicationMessage(
        "No CDRom was detected on your computer, the wizard will not continue!");
    view_.CloseWindow();
    return;
  }
  view_.ShowDrives(drives);
  copy_.SetPlayerRoot(RegGetString(system_.registry, platform::RegistryRoot::kCurrentUser,
                                   kPlayerKey, kPlayerValue, ""));
  Show(Page::kWelcome);
}

void CdWizard::cmdNext_Click(int Index) {
  if (isCopying_) return;  // Came in while the copy let messages run.
  switch (StepOf(page_, Index)) {
    case WizardStep::kNone:
      return;
    case WizardStep::kShowWelcome:
      return Show(Page::kWelcome);
    case WizardStep::kFindPrograms:
      return FindPrograms();
    case WizardStep::kShowDrives:
      return Show(Page::kDrive);
    case WizardStep::kStartBurning:
      return StartBurning();
    case WizardStep::kReselect:
      return Show(Page::kReselect);
    case WizardStep::kWriteDisc:
      return WriteDisc();
    case WizardStep::kEject:
      return Eject();
    case WizardStep::kClose:
      return cmdCancel_Click();
  }
}

void CdWizard::cmdCancel_Click() {
  if (!isCopying_) view_.CloseWindow();
}

void CdWizard::Show(Page page) {
  page_ = page;
  view_.ShowPage(LookOf(page, software_.UsesDragToDisc()));
}

void CdWizard::FindPrograms() {
  Show(Page::kLookingUp);
  software_.LookUp();
  if (software_.HasDirectCD()) return Show(Page::kDrive);
  TellAndClose("The program [" + strBurnExeName + "] is not found! The wizard will not continue.");
}

void CdWizard::StartBurning() {
  Show(Page::kFileName);
  const DeafTime starting(view_);
  const std::string target = mainWindow_.TargetPath();
  if (!target.empty()) view_.SetFileName(platform::LastFilePart(target));
  if (!software_.UsesDragToDisc())
    software_.LaunchDirectCD(view_.Window());
  else if (view_.AskYesNo("Do you want to format this CD?"))
    software_.FormatWithDragToDisc(view_.Window());
}

void CdWizard::WriteDisc() {
  const WizardInput input = view_.Input();
  if (!IsFileName(input.fileName)) return AskForName();
  const std::int32_t lngTotalMB = copy_.FilesSize(input.wantsPlayer);
  const std::int32_t lngFreeMB = WholeFreeMB(system_.names, input.drive + "\\" + input.fileName);
  if (lngTotalMB == 0) return view_.CloseWindow();
  if (lngFreeMB == 0) return AskToTryAgain();
  if (lngTotalMB >= lngFreeMB)
    return TellAndClose("The total size of the file you selected is too big to fit on the CD!");
  Show(Page::kCopying);
  switch (Copy(input)) {
    case CopyEnd::kCopied:
      return Show(Page::kEject);
    case CopyEnd::kNotReady:
      return AskToTryAgain();
    case CopyEnd::kOver:
      return view_.CloseWindow();
  }
}

void CdWizard::AskForName() {
  view_.ShowMessage("You must input a file name!");
  Show(Page::kFileName);
}

CopyEnd CdWizard::Copy(const WizardInput& input) {
  const CopyTime time(isCopying_, view_);
  if (!view_.GoOn()) return CopyEnd::kOver;
  return copy_.CopyFiles(input.wantsPlayer, input.drive, input.fileName);
}

void CdWizard::AskToTryAgain() {
  if (!view_.AskYesNo("Disk not ready! Do you want to try again?"))
    return TellAndClose("The wizard will not continue.");
  cmdNext_Click(page_button::kCopyingBack);
  cmdNext_Click(page_button::kFileNameBack);
}

void CdWizard::Eject() {
  const DeafTime ejecting(view_);
  software_.OpenDoor(view_.Input().drive);
  if (!software_.UsesDragToDisc()) return Show(Page::kDone);
  view_.ShowHourglass(true);
  const platform::WindowHandle ejectDialog = software_.WaitForEjectDialog();
  system_.desktop.BringToFront(ejectDialog);
  view_.ShowHourglass(false);
  Show(Page::kDone);
  system_.desktop.BringToFront(ejectDialog);
}

void CdWizard::TellAndClose(const std::string& text) {
  view_.ShowMessage(text);
  view_.CloseWindow();
}
