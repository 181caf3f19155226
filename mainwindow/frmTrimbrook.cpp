#include "mainwindow/frmTrimbrook.h"

#include <cstdlib>

#include "cdwizard/system_helpers.h"
#include "platform/trimmed.h"

using forms::Event;

frmTrimbrook::frmTrimbrook(platform::Platform& system)
    : Form(layout::kFrmTrimbrook), system_(system) {
  for (forms::UpDown* hours : {&UpDownH, &UpDown1}) hours->SetRange(0, 23);
  for (forms::UpDown* rest : {&UpDownM, &UpDownS, &UpDown2, &UpDown3}) rest->SetRange(0, 59);
  BindEvents();
}

void frmTrimbrook::BindEvents() {
  Bind({
      {Command1, Event::kClick, [this] { Command1_Click(); }},
      {Command2, Event::kClick, [this] { Command2_Click(); }},
      {Slider1, Event::kScroll, [this] { Slider1_Scroll(); }},
      {Slider1, Event::kChange, [this] { Slider1_Change(); }},
      {Slider2, Event::kScroll, [this] { Slider2_Scroll(); }},
      {Slider2, Event::kChange, [this] { Slider2_Change(); }},
      {cmdSet, Event::kClick, [this] { cmdSet_Click(); }},
      {cmdClear, Event::kClick, [this] { cmdClear_Click(); }},
      {Command8, Event::kClick, [this] { Command8_Click(); }},
      {CheckCTRS, Event::kClick, [this] { CheckCTRS_Click(); }},
      {Calendar1, Event::kClick, [this] { Calendar1_Click(); }},
      {Calendar1, Event::kMonthChange, [this] { Calendar1_MonthChange(); }},
      {Calendar1, Event::kYearChange, [this] { Calendar1_MonthChange(); }},
      {Calendar2, Event::kClick, [this] { Calendar2_Click(); }},
      {Calendar2, Event::kMonthChange, [this] { Calendar2_MonthChange(); }},
      {Calendar2, Event::kYearChange, [this] { Calendar2_MonthChange(); }},
      {Text8, Event::kEnter, [this] { Command5_Click(); }},
      {Text9, Event::kEnter, [this] { Command5_Click(); }},
      {Text10, Event::kEnter, [this] { Command5_Click(); }},
      {Text11, Event::kEnter, [this] { Command5_Click(); }},
      {Text12, Event::kEnter, [this] { Command5_Click(); }},
      {Text13, Event::kEnter, [this] { Command5_Click(); }},
      {Command5, Event::kClick, [this] { Command5_Click(); }},
      {Command6, Event::kClick, [this] { Command6_Click(); }},
      {Command3, Event::kClick, [this] { Command3_Click(); }},
      {Command7, Event::kClick, [this] { Command7_Click(); }},
      {Command4, Event::kClick, [this] { Command4_Click(); }},
  });
  BindKeys({
      {FCONTROL, 'O', [this] { Command1_Click(); }},
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
  if (system_.drives.HasFile(guide) &&
      system_.desktop.ShellOpen(owner, guide, platform::ShowCommand::kDefault))
    return;
  ShowMessage("The user guide cannot be opened: " + guide);
}

void frmTrimbrook::Command4_Click() {
  Unload();
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
