#include "cdwizard/frmSaveToCD.h"

#include <cmath>

#include "platform/trimmed.h"
#include "resources/layout.h"
#include "storage/new_file.h"

using forms::Event;

frmSaveToCD::frmSaveToCD(platform::Platform& system, MainWindowView& mainWindow)
    : Form(layout::kFrmSaveToCD), system_(system), wizard_(system, mainWindow, *this) {
  BindArray<forms::Button>(cmdNext, Event::kClick,
                           [this](int index) { wizard_.cmdNext_Click(index); });
  Bind({{cmdCancel, Event::kClick, [this] { wizard_.cmdCancel_Click(); }}});
}

void frmSaveToCD::OnLoad() {
  wizard_.Load();
}

void frmSaveToCD::OnUnload() {
  SetHourglass(false);
}

// Comes while a box is up, too; the program may be gone as soon as this has returned.
void frmSaveToCD::OnEndSession() {
  sessionEnds_ = true;
  NewFile::RemoveUnfinished();
}

// What was pressed before a box could be seen is no answer to it.
void frmSaveToCD::ShowMessage(const std::string& text) {
  forms::DiscardPendingInput();
  Form::ShowMessage(text);
}

bool frmSaveToCD::AskYesNo(const std::string& text) {
  forms::DiscardPendingInput();
  return Form::AskYesNo(text);
}

void frmSaveToCD::ShowPage(const PageLook& look) {
  Label2.SetCaption(look.heading);
  Label1.SetTop(look.instructionsTop);
  Label1.SetHeight(look.instructionsHeight);
  Label1.SetCaption(look.instructions);
  Combo1.SetVisible(look.showsDrives);
  Text1.SetVisible(look.showsFileName);
  Check1.SetVisible(look.showsFileName);
  cmdCancel.SetEnabled(look.cancelEnabled);
  ShowButtons(look);
  Focus(look);
  forms::BeginNewView();
}

void frmSaveToCD::ShowButtons(const PageLook& look) {
  for (int i = 0; i < kPageButtons; ++i) {
    const PageLook::Button button = look.buttons[static_cast<std::size_t>(i)];
    cmdNext(i).SetEnabled(button.enabled);
    cmdNext(i).SetVisible(button.visible);
  }
}

void frmSaveToCD::Focus(const PageLook& look) {
  if (look.defaultButton != page_button::kNone) cmdNext(look.defaultButton).SetDefault();
  if (look.focusesFileName) {
    Text1.SetFocus();
    Text1.SelectAll();
  }
  if (look.focus != page_button::kNone) cmdNext(look.focus).SetFocus();
}

void frmSaveToCD::ShowDrives(const std::vector<std::string>& drives) {
  for (const std::string& drive : drives) Combo1.AddItem(drive);
  Combo1.SetListIndex(Combo1.ListCount() - 1);
}

WizardInput frmSaveToCD::Input() {
  return {.drive = Combo1.Text(), .fileName = Trimmed(Text1.Text()), .wantsPlayer = Check1.Value()};
}

void frmSaveToCD::SetFileName(const std::string& name) {
  Text1.SetText(name);
  Text1.SelectAll();
}

platform::WindowHandle frmSaveToCD::Window() {
  return static_cast<platform::WindowHandle>(reinterpret_cast<UINT_PTR>(window()));
}

void frmSaveToCD::SetCopying(bool on) {
  if (on) {
    hold_.emplace(window());
    return;
  }
  hold_.reset();
  Animation1.Stop();
  Animation1.SetVisible(false);
  ProgressBar1.SetVisible(false);
  Label3.SetVisible(false);
}

void frmSaveToCD::ShowProgress() {
  Animation1.SetVisible(true);
  ProgressBar1.SetVisible(true);
  Label3.SetVisible(true);
  ShowPercent(0);
  // Without the clip the copy goes on without a picture.
  if (Animation1.Open(system_.Beside("FILECOPY.avi"))) Animation1.Play();
}

void frmSaveToCD::ShowPercent(double percent) {
  const auto whole = static_cast<int>(std::lround(percent));
  ProgressBar1.SetValue(whole);
  Label3.SetCaption(std::to_string(whole) + "%");
}

bool frmSaveToCD::GoOn() {
  forms::DoEvents();
  return !sessionEnds_;
}
