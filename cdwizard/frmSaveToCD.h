#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cdwizard/cd_wizard.h"
#include "cdwizard/wizard_view.h"
#include "forms/application.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "forms/input.h"
#include "forms/long_work.h"
#include "platform/platform.h"
#include "resources/resource.h"
#include "save/main_window_view.h"

/// The window of the CD wizard: shows its pages and hands its clicks on.
class frmSaveToCD : public forms::Form, private WizardView {
 public:
  frmSaveToCD(platform::Platform& system, MainWindowView& mainWindow);

  /// Any address is taken as the only one of its kind.
  static bool DuplicateIPChecker(const std::string& /*strIP*/) { return true; }

 protected:
  void OnLoad() override;
  bool OnQueryUnload() override { return wizard_.MayClose(); }
  void OnUnload() override;
  void OnEndSession() override;

 private:
  // WizardView
  void ShowPage(const PageLook& look) override;
  void ShowDrives(const std::vector<std::string>& drives) override;
  WizardInput Input() override;
  void SetFileName(const std::string& name) override;
  void ShowMessage(const std::string& text) override;
  void ShowHourglass(bool on) override { SetHourglass(on); }
  void SetCopying(bool on) override;
  void DiscardInput() override { forms::BeginNewView(); }
  void CloseWindow() override { Unload(); }
  platform::WindowHandle Window() override;

  // CopyView
  void ShowProgress() override;
  void ShowPercent(double percent) override;
  void ShowApplicationMessage(const std::string& text) override {
    Form::ShowApplicationMessage(text);
  }
  bool AskYesNo(const std::string& text) override;
  bool GoOn() override;

  void ShowButtons(const PageLook& look);
  void Focus(const PageLook& look);

  platform::Platform& system_;
  CdWizard wizard_;
  std::optional<forms::SystemHold> hold_;  ///< While files are copied.
  bool sessionEnds_ = false;

  forms::Label Label1{*this, IDC_frmSaveToCD_Label1};
  forms::Label Label2{*this, IDC_frmSaveToCD_Label2};
  forms::ComboBox Combo1{*this, IDC_frmSaveToCD_Combo1};
  forms::TextBox Text1{*this, IDC_frmSaveToCD_Text1};
  forms::CheckBox Check1{*this, IDC_frmSaveToCD_Check1};
  forms::Animation Animation1{*this, IDC_frmSaveToCD_Animation1};
  forms::ProgressBar ProgressBar1{*this, IDC_frmSaveToCD_ProgressBar1};
  forms::Label Label3{*this, IDC_frmSaveToCD_Label3};
  forms::ControlArray<forms::Button> cmdNext{*this, IDC_frmSaveToCD_cmdNext, 0, kPageButtons - 1};
  forms::Button cmdCancel{*this, IDC_frmSaveToCD_cmdCancel};
};
