#include "driver/trimbrook.h"

#include <shlobj.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "forms/win32.h"

namespace driver {
namespace {

constexpr const char* kMainClass = "frmTrimbrook";
constexpr const char* kSaveClass = "frmSaveFile";
constexpr int kCameras = 32;

}  // namespace

Trimbrook::Trimbrook(const std::string& arguments, const std::string& program)
    : Program('"' + program + '"' + arguments), main_(AwaitShown(kMainClass)) {
  Settle();
}

// Messages that are posted come in their order, and the last one is seen at a hidden button.
void Trimbrook::Settle() const {
  const Window hidden = At(IDC_frmTrimbrook_Command7);
  const auto state = [&] { return hidden.Ask(BM_GETSTATE) & BST_PUSHED; };
  const LRESULT before = state();
  PostMessageW(hidden.handle(), BM_SETSTATE, before == 0 ? TRUE : FALSE, 0);
  Await("answer", [&] { return !Runs() || state() != before; });
}

std::vector<std::string> Trimbrook::Texts(const std::vector<int>& ids) const {
  std::vector<std::string> texts;
  texts.reserve(ids.size());
  for (const int id : ids) texts.push_back(Text(id));
  return texts;
}

std::vector<int> Trimbrook::EnabledCameras() const {
  std::vector<int> cameras;
  for (int camera = 1; camera <= kCameras; ++camera)
    if (At(IDC_frmTrimbrook_Check1, camera - 1).IsUsable()) cameras.push_back(camera);
  return cameras;
}

void Trimbrook::ChooseCameras(const std::vector<int>& cameras) const {
  for (const int camera : EnabledCameras())
    At(IDC_frmTrimbrook_Check1, camera - 1)
        .Tick(std::find(cameras.begin(), cameras.end(), camera) != cameras.end());
}

FileDialog Trimbrook::OpenDialog(int button) const {
  At(button).ClickAndGoOn();
  return AwaitFileDialog(button == IDC_frmTrimbrook_Command1 ? kSourceDialog : kTargetDialog);
}

void Trimbrook::AnswerSourceDialog(const std::string& path) const {
  const FileDialog dialog = SourceDialog();
  dialog.Accept(path);
  dialog.AwaitGone();
}

// The shell hands over its list in the program's own memory.
void Trimbrook::Drop(const std::vector<std::string>& paths) const {
  std::wstring list;
  for (const std::string& path : paths) list += forms::Wide(path) + L'\0';
  DROPFILES header = {};
  header.pFiles = sizeof header;
  header.fWide = TRUE;
  const std::size_t bytes = (list.size() + 1) * sizeof(wchar_t);
  auto* memory = static_cast<char*>(
      VirtualAllocEx(process(), nullptr, sizeof header + bytes, MEM_COMMIT, PAGE_READWRITE));
  WriteProcessMemory(process(), memory, &header, sizeof header, nullptr);
  WriteProcessMemory(process(), memory + sizeof header, list.c_str(), bytes, nullptr);
  PostMessageW(main_.handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
}

void Trimbrook::AwaitSource(const std::string& path) const {
  Await("source " + path, [&] { return Text(IDC_frmTrimbrook_Text1) == path; });
}

void Trimbrook::ChooseTarget(const std::string& path) const {
  const bool exists = FileExists(path);
  const FileDialog dialog = TargetDialog();
  dialog.Accept(path);
  if (exists) AnswerMessage(IDYES);
  dialog.AwaitGone();
  Await("target " + path, [&] { return !Text(IDC_frmTrimbrook_Text6).empty(); });
}

void Trimbrook::ChooseBlocks(int first, int last) const {
  const Window slider1 = At(IDC_frmTrimbrook_Slider1);
  const Window slider2 = At(IDC_frmTrimbrook_Slider2);
  slider1.Press(VK_HOME);
  slider2.Press(VK_END);
  while (First() < first) slider1.Press(VK_RIGHT);
  while (Last() > last) slider2.Press(VK_LEFT);
}

void Trimbrook::TypeTime(int firstBox, const std::vector<std::string>& time) const {
  constexpr int kBetweenBoxes = IDC_frmTrimbrook_Text9 - IDC_frmTrimbrook_Text8;
  for (int box = firstBox; const std::string& field : time) {
    Focus(box);
    At(box).SetText(field);
    box += kBetweenBoxes;
  }
}

Message Trimbrook::AnswerMessage(int button) const {
  Message message = Program::AnswerMessage(button);
  Settle();
  return message;
}

Window Trimbrook::StartSave() const {
  At(IDC_frmTrimbrook_Command3).ClickAndGoOn();
  return AwaitShown(kSaveClass);
}

Window Trimbrook::AwaitDone() const {
  const Window save = AwaitShown(kSaveClass);
  const Window status = save.Control(IDC_frmSaveFile_Label2);
  Await(kDone, [&] { return status.Text() == kDone; });
  Settle();
  return save;
}

std::shared_ptr<void> Trimbrook::CatchSave() const {
  // What is shown lags behind: a save may be nearer to its end than it says.
  constexpr int kNearTheEnd = 50;
  constexpr int kAttempts = 20;
  for (int attempt = 0; attempt < kAttempts; ++attempt, FinishSave()) {
    const Window percentage = StartSave().Control(IDC_frmSaveFile_Label3);
    const auto percent = [&] { return std::atoi(percentage.Text().c_str()); };
    Await("some percent", [&] { return percent() > 0; });
    auto pause = Pause(percentage);
    if (percent() < kNearTheEnd) return pause;
  }
  throw std::runtime_error("No save was caught in its midst");
}

void Trimbrook::AwaitGone(const std::string& className) const {
  Await("end of " + className, [&] { return !FindShown(className) && main_.IsEnabled(); });
}

void Trimbrook::LeaveSave() const {
  AwaitShown(kSaveClass).Control(IDC_frmSaveFile_cmdCancel).ClickAndGoOn();
  AwaitGone(kSaveClass);
}

}  // namespace driver
