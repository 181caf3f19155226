#include "save/frmSaveFile.h"

#include <cmath>

#include "forms/application.h"
#include "forms/dialogs.h"
#include "forms/input.h"
#include "platform/paths.h"
#include "platform/scoped_flag.h"
#include "save/save_messages.h"
#include "save/save_state.h"

using forms::Event;
using mdlSave::blnSaving;
using mdlSave::blnSomeCameras;
using mdlSave::blnStartSave;

namespace {

using std::chrono::milliseconds;

// What the blocks fill of the bar; the rest is the finished file's move, or its close.
constexpr double kBlocksPercent = 95;
constexpr double kSomeCamerasPercent = 97;

// No more is shown than a person can see.
constexpr milliseconds kBetweenPercents{40};
constexpr milliseconds kBetweenWords{1000};

constexpr char kAllFiles[] = "All Files (*.*)|*.*";

}  // namespace

frmSaveFile::frmSaveFile(platform::Platform& system, MainWindowView& mainWindow)
    : Form(layout::kFrmSaveFile), system_(system), mainWindow_(mainWindow) {
  Bind({
      {Timer1, Event::kTimer, [this] { Timer1_Timer(); }},
      {cmdOpen, Event::kClick, [this] { cmdOpen_Click(); }},
      {cmdOpenFolder, Event::kClick, [this] { cmdOpenFolder_Click(); }},
      {cmdCancel, Event::kClick, [this] { Unload(); }},
  });
}

void frmSaveFile::OnLoad() {
  if (blnStartSave) Timer1.SetEnabled(true);
  Animation1.SetVisible(true);
  if (Animation1.Open(system_.Beside("FILECOPY.avi"))) Animation1.Play();
  cmdOpen.SetEnabled(false);
  cmdOpenFolder.SetEnabled(false);
  ProgressBar1.SetVisible(true);
  Label3.SetVisible(true);
  Label3.SetCaption("0%");
  cmdCancel.SetCaption("Cancel");
  forms::DoEvents();
}

void frmSaveFile::Timer1_Timer() {
  if (!blnStartSave) return;
  blnStartSave = false;
  Timer1.SetEnabled(false);
  taskbar_.emplace(window());
  ShowEnd(SaveAsChosen());
}

SaveResult frmSaveFile::SaveAsChosen() {
  const ScopedFlag saving(blnSaving);
  const forms::SystemHold hold(window());
  save_.emplace(system_, mainWindow_.ChosenJob());
  SaveResult result = save_->Watch(*this);
  save_.reset();
  return result;
}

/// The save's files are closed and what is half done is removed: a box may stay up for hours, and
/// nothing depends on its being answered.
void frmSaveFile::ShowEnd(const SaveResult& result) {
  ShowPercent();
  const bool hasFailed = result.end != SaveEnd::kSaved && result.end != SaveEnd::kCancelled;
  if (hasFailed && taskbar_) taskbar_->ShowFailed();
  for (const SaveMessage& message : MessagesOf(result))
    message.isOnChoice ? ShowMessage(message.text) : ShowApplicationMessage(message.text);
  if (result.end == SaveEnd::kCancelled) {
    forms::DoEvents();
  } else if (hasFailed) {
    ShowFailed();
  } else {
    ShowFinished();
  }
}

void frmSaveFile::OnUnload() {
  blnSaving = false;
  blnStartSave = false;
  Timer1.SetEnabled(false);
}

void frmSaveFile::OnEndSession() {
  if (save_) save_->End();
  Unload();
}

void frmSaveFile::cmdOpen_Click() {
  OpenInShell(mainWindow_.TargetPath());
  Unload();
}

void frmSaveFile::cmdOpenFolder_Click() {
  const std::string target = mainWindow_.TargetPath();
  const std::string folder =
      target.substr(0, target.size() - platform::LastFilePart(target).size());
  const auto path = forms::AskOpenFile(window(), {forms::kApplicationTitle, kAllFiles, folder, ""});
  if (path && path->empty()) return;
  if (path) {
    forms::DoEvents();
    if (IsClosed()) return;
    OpenInShell(*path);
  }
  Unload();
}

void frmSaveFile::OpenInShell(const std::string& path) {
  system_.desktop.ShellOpen(
      static_cast<platform::WindowHandle>(reinterpret_cast<UINT_PTR>(window())), path,
      platform::ShowCommand::kDefault);
}

void frmSaveFile::ShowPercent() {
  const int whole = static_cast<int>(std::lround(percent_));
  ProgressBar1.SetValue(whole);
  Label3.SetCaption(std::to_string(whole) + "%");
  if (taskbar_) taskbar_->SetValue(whole);
}

void frmSaveFile::ShowTimeLeft(TimeLeft::Time now, double done) {
  const std::string words = timeLeft_.At(now, done);
  if (now - toldAt_ < kBetweenWords) return;
  toldAt_ = now;
  Frame1.SetCaption(words);
}

void frmSaveFile::ShowStopped() {
  Animation1.Stop();
  Frame1.SetCaption("");
}

void frmSaveFile::ShowBlocksDone(std::int32_t done, std::int32_t total) {
  const double share = static_cast<double>(done) / total;
  percent_ = share * (blnSomeCameras ? kSomeCamerasPercent : kBlocksPercent);
  const TimeLeft::Time now = system_.clock.Now();
  if (done < total && now - shownAt_ < kBetweenPercents) return;
  shownAt_ = now;
  ShowPercent();
  ShowTimeLeft(now, share);
}

void frmSaveFile::ShowBlockMessage(const std::string& text) {
  ShowPercent();
  ShowApplicationMessage(text);
}

void frmSaveFile::ShowHourglass(bool on) {
  SetHourglass(on);
}

void frmSaveFile::ShowFinished() {
  percent_ = 100;
  ShowPercent();
  forms::DoEvents();
  ShowStopped();
  taskbar_.reset();
  Label2.SetCaption("File saving has been done!");
  cmdOpen.SetEnabled(true);
  cmdOpenFolder.SetEnabled(true);
  // A key that was meant for the main window must not open the new file.
  forms::BeginNewView();
  cmdOpen.SetFocus();
  cmdCancel.SetCaption("Exit");
  FlashTaskbar();
}

void frmSaveFile::ShowFailed() {
  ShowStopped();
  Label2.SetCaption("");
}

bool frmSaveFile::GoOn() {
  Label2.SetCaption(NewFile::WaitsForName() ? "The file name is in use. Trying again ..."
                                            : Label2.row().caption);
  forms::DoEvents();
  return blnSaving;
}
