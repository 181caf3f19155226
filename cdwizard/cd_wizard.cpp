#include "cdwizard/cd_wizard.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "cdwizard/system_helpers.h"
#include "platform/runtime_error.h"
#include "save/last_file_part.h"

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

}  // namespace

CdWizard::CdWizard(platform::Platform& system, MainWindowView& mainWindow, WizardView& view)
    : system_(system),
      mainWindow_(mainWindow),
      view_(view),
      software_(system),
      copy_(system, mainWindow, view) {}

void CdWizard::Load() {
  const std::vector<std::string> drives = system_.drives.CdRomDrives();
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
  if (Index >= 0 && Index < kPageButtons) Handle(ClickOn(Index));
}

void CdWizard::cmdCancel_Click() {
  Handle(WizardEvent::kCancel);
}

bool CdWizard::DuplicateIPChecker(const std::string&) {
  return true;
}

void CdWizard::Handle(WizardEvent event) {
  if (isCopying_) return;  // Came in while the copy let messages run.
  const auto step = NextStep(page_, event);
  if (!step) return;
  if (step->page != page_) Show(step->page);
  if (const auto outcome = Run(step->effect)) Handle(*outcome);
}

void CdWizard::Show(Page page) {
  page_ = page;
  view_.ShowPage(LookOf(page, software_.UsesDragToDisc()));
}

std::optional<WizardEvent> CdWizard::Run(WizardEffect effect) {
  switch (effect) {
    case WizardEffect::kNone:
      break;
    case WizardEffect::kLookUpPrograms:
      return LookUpPrograms();
    case WizardEffect::kTellProgramMissing:
      TellAndClose("The program [" + strBurnExeName +
                   "] is not found! The wizard will not continue.");
      break;
    case WizardEffect::kStartBurning:
      StartBurning();
      break;
    case WizardEffect::kAskForName:
      view_.ShowMessage("You must input a file name!");
      view_.FocusFileName();
      break;
    case WizardEffect::kCheckRoom:
      return CheckRoom();
    case WizardEffect::kTellTooBig:
      TellAndClose("The total size of the file you selected is too big to fit on the CD!");
      break;
    case WizardEffect::kCopy:
      return Copy();
    case WizardEffect::kAskTryAgain:
      return view_.AskYesNo("Disk not ready! Do you want to try again?") ? WizardEvent::kTryAgain
                                                                         : WizardEvent::kGiveUp;
    case WizardEffect::kGoBackToDrive:
      cmdNext_Click(page_button::kCopyingBack);
      cmdNext_Click(page_button::kFileNameBack);
      break;
    case WizardEffect::kTellGivingUp:
      TellAndClose("The wizard will not continue.");
      break;
    case WizardEffect::kEject:
      Eject();
      return WizardEvent::kEjected;
    case WizardEffect::kShowEjectDialog:
      if (software_.UsesDragToDisc()) system_.desktop.BringToFront(ejectDialog_);
      break;
    case WizardEffect::kClose:
      view_.CloseWindow();
      break;
  }
  return std::nullopt;
}

WizardEvent CdWizard::LookUpPrograms() {
  software_.LookUp();
  return software_.HasDirectCD() ? WizardEvent::kProgramFound : WizardEvent::kProgramMissing;
}

void CdWizard::StartBurning() {
  const std::string target = mainWindow_.TargetPath();
  if (!target.empty()) view_.SetFileName(LastFilePart(target));
  if (!software_.UsesDragToDisc())
    software_.LaunchDirectCD(view_.Window());
  else if (view_.AskYesNo("Do you want to format this CD?"))
    software_.FormatWithDragToDisc(view_.Window());
}

WizardEvent CdWizard::CheckRoom() {
  const WizardInput input = view_.Input();
  if (input.fileName.empty()) return WizardEvent::kNameMissing;
  const std::int32_t lngTotalMB = copy_.FilesSize(input.wantsPlayer);
  const std::int32_t lngFreeMB = WholeFreeMB(system_.names, input.drive + "\\" + input.fileName);
  if (lngTotalMB == 0) return WizardEvent::kPlayerDeclined;
  if (lngFreeMB == 0) return WizardEvent::kDiscNotReady;
  return lngTotalMB < lngFreeMB ? WizardEvent::kRoomEnough : WizardEvent::kTooBig;
}

WizardEvent CdWizard::Copy() {
  isCopying_ = true;
  view_.LetMessagesRun();
  const WizardInput input = view_.Input();
  const bool isCopied = copy_.CopyFiles(input.wantsPlayer, input.drive, input.fileName);
  isCopying_ = false;
  return isCopied ? WizardEvent::kCopied : WizardEvent::kDiscNotReady;
}

void CdWizard::Eject() {
  software_.OpenDoor(view_.Input().drive);
  if (software_.UsesDragToDisc()) {
    view_.ShowHourglass(true);
    ejectDialog_ = software_.WaitForEjectDialog();
    system_.desktop.BringToFront(ejectDialog_);
    view_.ShowHourglass(false);
  }
  // Nothing was pumped meanwhile: a click that waits would land on the next page's button.
  view_.DiscardInput();
}

void CdWizard::TellAndClose(const std::string& text) {
  view_.ShowMessage(text);
  view_.CloseWindow();
}
