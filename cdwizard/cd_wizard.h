#pragma once

#include <string>

#include "cdwizard/burning_software.h"
#include "cdwizard/cd_copy.h"
#include "cdwizard/wizard_view.h"
#include "platform/platform.h"
#include "save/main_window_view.h"

/// The rules of the CD wizard: does what the steps of its flow ask for, and shows the pages in its
/// window.
class CdWizard {
 public:
  CdWizard(platform::Platform& system, MainWindowView& mainWindow, WizardView& view);

  /// Fills the drive list and shows the welcome page; closes the window when there is no CD drive.
  /// More than three raise error 9.
  void Load();
  /// A click on the page button with this index, by the user or by the wizard itself.
  void cmdNext_Click(int Index);
  void cmdCancel_Click();
  /// False while files are being copied.
  bool MayClose() const { return !isCopying_; }

 private:
  void Show(Page page);
  void FindPrograms();
  void StartBurning();
  void WriteDisc();
  void AskForName();
  CopyEnd Copy(const WizardInput& input);
  void AskToTryAgain();
  void Eject();
  void TellAndClose(const std::string& text);

  platform::Platform& system_;
  MainWindowView& mainWindow_;
  WizardView& view_;
  BurningSoftware software_;
  CdCopy copy_;
  Page page_ = Page::kWelcome;
  bool isCopying_ = false;
};
