#include "mainwindow/frmTrimbrook.h"

#include <cstdlib>

#include "platform/trimmed.h"
#include "storage/system_helpers.h"

using forms::Event;

frmTrimbrook::frmTrimbrook(platform::Platform& system)
    : Form(layout::kFrmTrimbrook), system_(system) {
  for (const RangeEnd* end : {&start_, &end_})
    for (forms::UpDown* part : end->time) part->SetRange(0, part == end->time[0] ? 23 : 59);
  for (int i = Check1.first(); i <= Check1.last(); ++i)
    Check1(i).SetToolTipSource([this, i] { return CameraTip(i); });
  BindEvents();
}

void frmTrimbrook::BindEvents() {
  Bind({
      {Command1, Event::kClick, [this] { ChooseSource(); }},
      {Command2, Event::kClick, [this] { ChooseTarget(); }},
      {Slider1, Event::kScroll, [this] { Slider_Scroll(start_, end_); }},
      {Slider1, Event::kChange, [this] { Slider_Change(start_); }},
      {Slider2, Event::kScroll, [this] { Slider_Scroll(end_, start_); }},
      {Slider2, Event::kChange, [this] { Slider_Change(end_); }},
      {Calendar1, Event::kClick, [this] { Calendar_Click(start_); }},
      {Calendar1, Event::kMonthChange, [this] { Calendar_MonthChange(start_); }},
      {Calendar1, Event::kYearChange, [this] { Calendar_MonthChange(start_); }},
      {Calendar2, Event::kClick, [this] { Calendar_Click(end_); }},
      {Calendar2, Event::kMonthChange, [this] { Calendar_MonthChange(end_); }},
      {Calendar2, Event::kYearChange, [this] { Calendar_MonthChange(end_); }},
      {cmdSet, Event::kClick, [this] { TickAll(true); }},
      {cmdClear, Event::kClick, [this] { TickAll(false); }},
      {Command8, Event::kClick, [this] { CheckAvailability(); }},
      {CheckCTRS, Event::kClick, [this] { CheckCTRS_Click(); }},
      {Command5, Event::kClick, [this] { Confirm(); }},
      {Command6, Event::kClick, [this] { ResetRange(); }},
      {Command3, Event::kClick, [this] { SaveFile(); }},
      {Command7, Event::kClick, [this] { SaveToCd(); }},
      {Command4, Event::kClick, [this] { Unload(); }},
  });
  for (const RangeEnd* end : {&start_, &end_})
    for (const forms::UpDown* part : end->time)
      Bind({{*part, Event::kEnter, [this] { Confirm(); }}});
  BindKeys({
      {FCONTROL, 'O', [this] { ChooseSource(); }},
      {FCONTROL, 'T', [this] { ChooseTarget(); }},
      {FCONTROL, 'S', [this] { SaveAskingForTarget(); }},
      {0, VK_F5, [this] { CheckAvailability(); }},
      {FCONTROL, 'A', [this] { TickAll(true); }, false},
      {FCONTROL | FSHIFT, 'A', [this] { TickAll(false); }, false},
      {0, VK_F1, [this] { OpenGuide(); }},
  });
}

void frmTrimbrook::OnLoad() {
  strBurnExeName = "DirectCD.exe";
  ShowToday();
  place().SetHeight(layout::kCompactHeight);
  Apply(layout::kCompact, *this);

  std::string burningProgram = AppPathOf(system_.registry, strBurnExeName);
  // This release does not offer the CD wizard, whatever burning program is there.
  burningProgram.clear();
  Apply(burningProgram.empty() ? layout::kWithoutCd : layout::kWithCd, *this);

  Apply(layout::kSixteenCameras, *this);
  TickAll(true);
  DragAcceptFiles(window(), TRUE);
  Command1.SetFocus();
}

void frmTrimbrook::OpenGuide() {
  const std::string guide = system_.Beside("user-guide.html");
  const auto owner = static_cast<platform::WindowHandle>(reinterpret_cast<UINT_PTR>(window()));
  if (system_.fso.HasFile(guide) &&
      system_.desktop.ShellOpen(owner, guide, platform::ShowCommand::kDefault))
    return;
  ShowMessage("The user guide cannot be opened: " + guide, forms::Tone::kError);
}

std::string frmTrimbrook::SourcePath() {
  return Trimmed(Text1.Text());
}

std::string frmTrimbrook::TargetPath() {
  return Trimmed(Text6.Text());
}

std::int32_t frmTrimbrook::SizeEstimateMB() {
  return std::atoi(Text4.Text().c_str());
}

std::int32_t frmTrimbrook::FirstBlock() {
  return Slider1.Value();
}

std::int32_t frmTrimbrook::LastBlock() {
  return Slider2.Value();
}
