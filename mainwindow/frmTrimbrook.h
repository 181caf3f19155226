#pragma once

#include <cstdint>
#include <string>

#include "capture/mdlFileProcessing.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "mainwindow/reading.h"
#include "platform/platform.h"
#include "resources/layouts.h"
#include "resources/resource.h"
#include "save/main_window_view.h"
#include "save/time_range.h"

/// The window that the program starts with: which recording to open, which part of it and which
/// cameras to keep, and where to save that. One file per concern: frmTrimbrook_source.cpp, _range,
/// _cameras and _target; loading and leaving in frmTrimbrook.cpp.
class frmTrimbrook : public forms::Form, private MainWindowView {
 public:
  explicit frmTrimbrook(platform::Platform& system);

  /// Opens a recording that was handed to the program as if the user had chosen it.
  void OpenHandedFile(const std::string& path);

 protected:
  void OnLoad() override;
  void OnFileDropped(const std::string& path) override { OpenHandedFile(path); }

 private:
  void BindEvents();

  // MainWindowView
  std::string SourcePath() override;
  std::string TargetPath() override;
  std::int32_t SizeEstimateMB() override;
  std::int32_t FirstBlock() override;
  std::int32_t LastBlock() override;

  // The source file.
  void Command1_Click();
  void Command4_Click();
  void CloseSource();
  void OpenSource(const std::string& path);
  bool MeasureSource(const std::string& path);
  Reading StartReading(int passes);
  bool ReadSource(const std::string& path);
  bool AcceptReading(mdlFileProcessing::ReadEnd end);
  void ShowSource(const std::string& path);
  void OpenSliders();
  void OpenGuide();

  // The time range.
  void Slider1_Scroll();
  void Slider1_Change();
  void Slider2_Scroll();
  void Slider2_Change();
  void Calendar1_Click();
  void Calendar1_MonthChange();
  void Calendar2_Click();
  void Calendar2_MonthChange();
  void CheckCTRS_Click();
  void Command5_Click();
  void Command6_Click();
  void RefuseMove(forms::Slider& slider, const forms::Slider& other, const char* message);
  void ShowRange();
  void ResetRange();
  void ShowToday();
  void ShowCustomDates(platform::Date start, platform::Date end);
  void ShowCustomTimes();
  void ShowAllowedTimes();
  void KeepDayOfMonth(forms::MonthCalendar& calendar, std::string& dateText,
                      std::int16_t& rememberedDay);
  std::string DateTextOf(const forms::MonthCalendar& calendar);

  // The cameras.
  void cmdSet_Click();
  void cmdClear_Click();
  void Command8_Click();
  void TickAll(bool ticked);
  bool CheckAvailability();
  void ShowAvailability(BlockRange range);
  bool EnsureAvailabilityChecked();
  std::int16_t GetCameraSelection();

  // The target file, and what is done with it.
  void Command2_Click();
  void Command3_Click();
  void Command7_Click();
  void ChooseTarget();
  void SaveFile();
  void SaveAskingForTarget();
  void ShowFreeSpace();
  const char* SaveRefusal();
  bool AcceptSelection();
  bool AcceptHighCameras();

  platform::Platform& system_;
  std::string strCal1Date;       ///< Date that the start calendar shows.
  std::int16_t intCal1Day = 1;   ///< Day of the month remembered for it.
  std::string strCal2Date;       ///< Date that the end calendar shows.
  std::int16_t intCal2Day = 1;   ///< Day of the month remembered for it.
  std::string strStartTime;      ///< Start of block `Slider1.Value`.
  std::string strEndTime;        ///< End of block `Slider2.Value`.
  BlockRange checkedRange_;      ///< Blocks whose cameras were looked up last.
  int rise_ = 0;                 ///< Twips that the expanded window has really moved up.
  bool choosingSource_ = false;  ///< The choice of a source is under way.
  bool last20D_ = true;          ///< Kind of the file that was chosen last in this run.

  // "Source File"
  forms::Frame Frame1{*this, IDC_frmTrimbrook_Frame1};
  forms::TextBox Text1{*this, IDC_frmTrimbrook_Text1};  ///< Path; empty when no source is open.
  forms::TextBox Text2{*this, IDC_frmTrimbrook_Text2};  ///< Start and end of the recording.
  forms::TextBox Text3{*this, IDC_frmTrimbrook_Text3};  ///< Size, megabytes.
  forms::PictureButton Command1{*this, IDC_frmTrimbrook_Command1};  ///< Chooses the source.

  // "Target File Info"
  forms::Frame Frame2{*this, IDC_frmTrimbrook_Frame2};
  forms::TextBox Text6{*this, IDC_frmTrimbrook_Text6};  ///< Path; empty until it is chosen.
  forms::TextBox Text5{*this, IDC_frmTrimbrook_Text5};  ///< Start and end of the chosen blocks.
  forms::TextBox Text4{*this, IDC_frmTrimbrook_Text4};  ///< Size of the chosen blocks, megabytes.
  forms::PictureButton Command2{*this, IDC_frmTrimbrook_Command2};  ///< Chooses the target.
  forms::TextBox Text7{*this, IDC_frmTrimbrook_Text7};  ///< Free space of its disk, megabytes.

  // "Target File Setup"
  forms::Frame Frame3{*this, IDC_frmTrimbrook_Frame3};
  forms::Slider Slider1{*this, IDC_frmTrimbrook_Slider1};  ///< First block to keep, from 1.
  forms::Slider Slider2{*this, IDC_frmTrimbrook_Slider2};  ///< Last block to keep.

  // "Camera Setup"
  forms::Frame Frame7{*this, IDC_frmTrimbrook_Frame7};
  /// Camera i + 1 is to be kept; enabled when it occurs in the checked range.
  forms::ControlArray<forms::CheckBox> Check1{*this, IDC_frmTrimbrook_Check1, 0, 31};
  /// Numbers of the cameras; element 0 is the "MB" behind `Text4`.
  forms::ControlArray<forms::Label> Label5{*this, IDC_frmTrimbrook_Label5, 0, 32};
  forms::PictureButton cmdSet{*this, IDC_frmTrimbrook_cmdSet};      ///< Ticks all cameras.
  forms::PictureButton cmdClear{*this, IDC_frmTrimbrook_cmdClear};  ///< Clears all cameras.
  forms::Button Command8{*this, IDC_frmTrimbrook_Command8};         ///< "Check Availability"

  forms::CheckBox CheckCTRS{*this, IDC_frmTrimbrook_CheckCTRS};  ///< Shows the custom time range.
  // "Custom Time Range Setup": its start, then its end, each a day and the arrows and boxes of
  // hour, minute and second.
  forms::Frame Frame4{*this, IDC_frmTrimbrook_Frame4};
  forms::MonthCalendar Calendar1{*this, IDC_frmTrimbrook_Calendar1};
  forms::TextBox Text8{*this, IDC_frmTrimbrook_Text8};
  forms::UpDown UpDownH{*this, IDC_frmTrimbrook_UpDownH};
  forms::TextBox Text9{*this, IDC_frmTrimbrook_Text9};
  forms::UpDown UpDownM{*this, IDC_frmTrimbrook_UpDownM};
  forms::TextBox Text10{*this, IDC_frmTrimbrook_Text10};
  forms::UpDown UpDownS{*this, IDC_frmTrimbrook_UpDownS};
  forms::MonthCalendar Calendar2{*this, IDC_frmTrimbrook_Calendar2};
  forms::TextBox Text11{*this, IDC_frmTrimbrook_Text11};
  forms::UpDown UpDown1{*this, IDC_frmTrimbrook_UpDown1};
  forms::TextBox Text12{*this, IDC_frmTrimbrook_Text12};
  forms::UpDown UpDown2{*this, IDC_frmTrimbrook_UpDown2};
  forms::TextBox Text13{*this, IDC_frmTrimbrook_Text13};
  forms::UpDown UpDown3{*this, IDC_frmTrimbrook_UpDown3};
  forms::Button Command5{*this,
                         IDC_frmTrimbrook_Command5};  ///< "Confirm": moves the sliders there.
  forms::Button Command6{*this, IDC_frmTrimbrook_Command6};  ///< "Reset": back to the whole source.

  forms::Button Command3{*this, IDC_frmTrimbrook_Command3};  ///< "Save File"
  forms::Button Command7{*this, IDC_frmTrimbrook_Command7};  ///< "Save To CD", not offered.
  forms::Button Command4{*this, IDC_frmTrimbrook_Command4};  ///< "Exit"
};
