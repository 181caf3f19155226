#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "forms/controls.h"
#include "forms/form.h"
#include "forms/long_work.h"
#include "platform/platform.h"
#include "resources/layout.h"
#include "resources/resource.h"
#include "save/background_save.h"
#include "save/main_window_view.h"
#include "save/operations.h"
#include "save/save_progress.h"
#include "save/time_left.h"

/// The small window that runs a save and shows it, and offers the new file afterwards. Closing it
/// in any way cancels a save that still runs.
class frmSaveFile : public forms::Form, private SaveProgress {
 public:
  frmSaveFile(platform::Platform& system, MainWindowView& mainWindow);

 protected:
  void OnLoad() override;
  void OnUnload() override;
  void OnEndSession() override;

 private:
  void Timer1_Timer();
  void cmdOpen_Click();
  void cmdOpenFolder_Click();
  SaveResult SaveAsChosen();
  void ShowEnd(const SaveResult& result);
  void ShowFinished();
  void ShowFailed();
  void OpenInShell(const std::string& path);
  /// Shows how far the save is, as far as that is not to be seen yet.
  void ShowPercent();
  void ShowTimeLeft(TimeLeft::Time now, double done);
  /// Nothing moves any longer.
  void ShowStopped();

  // SaveProgress
  void ShowBlocksDone(std::int32_t done, std::int32_t total) override;
  void ShowBlockMessage(const std::string& text) override;
  void ShowHourglass(bool on) override;
  bool GoOn() override;

  platform::Platform& system_;
  MainWindowView& mainWindow_;

  double percent_ = 0;
  TimeLeft::Time shownAt_{};  ///< When the percentage was shown last.
  TimeLeft::Time toldAt_{};   ///< When the time that is left was told last.
  TimeLeft timeLeft_;
  std::optional<forms::TaskbarProgress> taskbar_;
  std::optional<BackgroundSave> save_;  ///< While it runs.

  forms::Timer Timer1{*this, IDC_frmSaveFile_Timer1};
  forms::Frame Frame1{*this, IDC_frmSaveFile_Frame1};
  forms::Animation Animation1{*this, IDC_frmSaveFile_Animation1};
  forms::Label Label2{*this, IDC_frmSaveFile_Label2};
  forms::ProgressBar ProgressBar1{*this, IDC_frmSaveFile_ProgressBar1};
  forms::Label Label3{*this, IDC_frmSaveFile_Label3};
  forms::Button cmdOpen{*this, IDC_frmSaveFile_cmdOpen};
  forms::Button cmdOpenFolder{*this, IDC_frmSaveFile_cmdOpenFolder};
  forms::Button cmdCancel{*this, IDC_frmSaveFile_cmdCancel};
};
