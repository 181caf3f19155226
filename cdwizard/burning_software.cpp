#include "cdwizard/burning_software.h"

#include "platform/runtime_error.h"
#include "sendkeys/clsSendKeys.h"
#include "storage/system_helpers.h"

using platform::ShowCommand;
using platform::WindowHandle;

namespace {

constexpr char kDragToDiscExecutable[] = "DrgToDsc.exe";
constexpr char kDirectCdTitle[] = "DirectCD";
constexpr char kDragToDiscTitle[] = "DrgToDsc";
constexpr char kEjectDialogTitle[] = "Drag-to-Disc   Eject Options";

void Activate(platform::Platform& system, const std::string& title) {
  if (!system.desktop.ActivateTitled(title))
    throw RuntimeError::InvalidProcedureCall(system.programName);
}

}  // namespace

void BurningSoftware::LookUp() {
  strDirectCDPath = AppPathOf(system_.registry, strBurnExeName);
  strDragToDiscPath = AppPathOf(system_.registry, kDragToDiscExecutable);
}

void BurningSoftware::LaunchDirectCD(WindowHandle owner) {
  system_.desktop.ShellOpen(owner, strDirectCDPath, ShowCommand::kNormal);
  const WindowHandle window = system_.desktop.WindowTitled(kDirectCdTitle);
  if (window != WindowHandle::kNone) system_.desktop.BringToFront(window);
}

void BurningSoftware::FormatWithDragToDisc(WindowHandle owner) {
  const std::string path = AppPathOf(system_.registry, kDragToDiscExecutable);
  if (system_.desktop.WindowTitled(kDragToDiscTitle) == WindowHandle::kNone)
    system_.desktop.ShellOpen(owner, path, ShowCommand::kNormal);
  clsSendKeys keys(system_.desktop, system_.programName);
  Activate(system_, kDragToDiscTitle);
  keys.SendKeys("%(K)");
  keys.SendKeys("%(F)");
  Activate(system_, kDragToDiscTitle);
  keys.SendKeys("%(O)");
}

// The alias is not closed: the drive stays the burning program's to close. What the commands answer
// is of no use: the drive may not take them, and its disc is ejected by hand then.
void BurningSoftware::OpenDoor(const std::string& drive) {
  system_.desktop.MediaCommand("open  " + drive + "  type cdaudio alias cd1");
  system_.desktop.MediaCommand("set cd1 door open wait");
}

WindowHandle BurningSoftware::WaitForEjectDialog() {
  WindowHandle dialog = WindowHandle::kNone;
  while (dialog == WindowHandle::kNone) dialog = system_.desktop.WindowTitled(kEjectDialogTitle);
  return dialog;
}
