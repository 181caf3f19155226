#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <string>

#include "capture/mdlFileProcessing.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "mainwindow/reading.h"
#include "platform/platform.h"
#include "resources/layout.h"
#include "resources/resource.h"
#include "save/camera_choice.h"
#include "save/main_window_view.h"
#include "save/time_range.h"

/// An end of the range: its slider, and its day and time of the custom range.
struct RangeEnd {
  forms::Slider& slider;
  forms::MonthCalendar& calendar;
  std::array<forms::UpDown*, 3> time;  ///< Hour, minute, second.
  /// When the blocks start, or end.
  const OneBased<platform::Date>& blockTimes;
  /// When the slider's block starts or ends: `strStartTime`, `strEndTime`.
  std::string strTime = {};
  /// Date that the calendar shows: `strCal1Date`, `strCal2Date`.
  std::string strCalDate = {};
  /// Day of the month remembered for it: `intCal1Day`, `intCal2Day`.
  std::chrono::day intCalDay = std::chrono::day(1);

  /// What `Seconds` was when it was confirmed, or set by the program.
  std::int64_t confirmed = 0;

  /// The time stamp that the calendar and the fields show.
  std::int64_t Seconds() const;
};

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
  void ChooseSource();
  void CloseSource();
  void OpenSource(const std::string& path);
  bool MeasureSource(const std::string& path);
  Reading StartReading(int passes);
  bool ReadSource(const std::string& path);
  bool AcceptReading(const mdlFileProcessing::ReadAnswer& read);
  void ShowSource(const std::string& path);
  void OpenSliders();
  bool RequireSource();
  void OpenGuide();

  // The time range.
  void Slider_Scroll(RangeEnd& moved, const RangeEnd& other);
  void Slider_Change(RangeEnd& end);
  void Calendar_Click(RangeEnd& end);
  void Calendar_MonthChange(RangeEnd& end);
  void CheckCTRS_Click();
  bool Confirm();
  void NoteConfirmed();
  bool SettleCustomTimes();
  void ResetRange();
  void ShowToday();
  void ShowCustomDate(RangeEnd& end, platform::Date date);
  void ShowCustomTime(RangeEnd& end, platform::Date date);
  void ShowAllowedTimes();

  // The cameras.
  void TickAll(bool ticked);
  bool CheckAvailability();
  void ShowAvailability(BlockRange range);
  std::string CameraTip(int camera);
  bool EnsureAvailabilityChecked();
  SelectionMode GetCameraSelection();

  // The target file, and what is done with it.
  void ChooseTarget();
  void SaveFile();
  void SaveToCd();
  void SaveAskingForTarget();
  void ShowFreeSpace();
  bool AcceptRange();
  bool AcceptRoom();
  bool AcceptCameras();
  bool AcceptHighCameras();

  platform::Platform& system_;
  BlockRange checkedRange_;  ///< Blocks whose cameras were looked up last.
  /// Titles in that range of those cameras (from 0) that were asked for.
  std::map<int, std::string> titles_;
  int rise_ = 0;                 ///< Twips that the expanded window has really moved up.
  bool choosingSource_ = false;  ///< The choice of a source is under way.
  bool last20D_ = true;          ///< Kind of the file that was chosen last in this run.

  // "Source File"
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
  /// Camera i + 1 is to be kept; enabled when it occurs in the checked range.
  forms::ControlArray<forms::CheckBox> Check1{*this, IDC_frmTrimbrook_Check1, 0, 31};
  forms::PictureButton cmdSet{*this, IDC_frmTrimbrook_cmdSet};      ///< Ticks all cameras.
  forms::PictureButton cmdClear{*this, IDC_frmTrimbrook_cmdClear};  ///< Clears all cameras.
  forms::Button Command8{*this, IDC_frmTrimbrook_Command8};         ///< "Check Availability"

  forms::CheckBox CheckCTRS{*this, IDC_frmTrimbrook_CheckCTRS};  ///< Shows the custom time range.
  // "Custom Time Range Setup": its start, then its end, each a day, hour, minute and second.
  forms::MonthCalendar Calendar1{*this, IDC_frmTrimbrook_Calendar1};
  forms::UpDown UpDownH{*this, IDC_frmTrimbrook_UpDownH};
  forms::UpDown UpDownM{*this, IDC_frmTrimbrook_UpDownM};
  forms::UpDown UpDownS{*this, IDC_frmTrimbrook_UpDownS};
  forms::MonthCalendar Calendar2{*this, IDC_frmTrimbrook_Calendar2};
  forms::UpDown UpDown1{*this, IDC_frmTrimbrook_UpDown1};
  forms::UpDown UpDown2{*this, IDC_frmTrimbrook_UpDown2};
  forms::UpDown UpDown3{*this, IDC_frmTrimbrook_UpDown3};
  forms::Button Command5{*this,
                         IDC_frmTrimbrook_Command5};  ///< "Confirm": moves the sliders there.
  forms::Button Command6{*this, IDC_frmTrimbrook_Command6};  ///< "Reset": back to the whole source.

  forms::Button Command3{*this, IDC_frmTrimbrook_Command3};  ///< "Save File"
  forms::Button Command7{*this, IDC_frmTrimbrook_Command7};  ///< "Save To CD", not offered.
  forms::Button Command4{*this, IDC_frmTrimbrook_Command4};  ///< "Exit"

  RangeEnd start_{.slider = Slider1,
                  .calendar = Calendar1,
                  .time = {&UpDownH, &UpDownM, &UpDownS},
                  .blockTimes = mdlFileProcessing::dtBlockStart};
  RangeEnd end_{.slider = Slider2,
                .calendar = Calendar2,
                .time = {&UpDown1, &UpDown2, &UpDown3},
                .blockTimes = mdlFileProcessing::dtBlockEnd};
};
