#include "driver/program.h"

#include <dlgs.h>

#include <stdexcept>

#include "forms/win32.h"

// All threads of a process: one of them has the windows, another one saves.
extern "C" {
LONG NTAPI NtSuspendProcess(HANDLE process);
LONG NTAPI NtResumeProcess(HANDLE process);
}

namespace driver {
namespace {

/// The first shown top-level window of a process for which `wanted` is true.
std::optional<Window> FindTopLevel(DWORD process, const std::function<bool(Window)>& wanted) {
  for (const Window& window : WindowsOf(process))
    if (window.IsShown() && wanted(window)) return window;
  return {};
}

std::string BoxText(const Window& box) {
  for (const Window& control : box.Controls())
    if (control.ClassName() == "Static" && !control.Text().empty()) return control.Text();
  return "";
}

}  // namespace

bool FileDialog::Is(const Window& window) {
  if (window.ClassName() != kDialogClass) return false;
  return IsWindowVisible(GetDlgItem(window.handle(), cmb13)) != FALSE;
}

std::string FileDialog::Look() const {
  const Window kinds = window_.Control(cmb1);
  return window_.Control(cmb2).Text() + ", " + window_.Control(cmb13).Text() + ", " + kinds.Text() +
         " of " + std::to_string(kinds.Ask(CB_GETCOUNT));
}

void FileDialog::Accept(const std::string& name) const {
  window_.Control(cmb13).SetText(name);
  window_.Control(IDOK).ClickAndGoOn();
}

void FileDialog::Cancel() const {
  window_.Control(IDCANCEL).ClickAndGoOn();
  AwaitGone();
}

void FileDialog::AwaitGone() const {
  Await("end of the file dialog", [&] { return !window_.IsShown(); });
}

std::shared_ptr<void> Pause(const Window& window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window.handle(), &id);
  const HANDLE program = OpenProcess(PROCESS_SUSPEND_RESUME, FALSE, id);
  if (NtSuspendProcess(program) != 0) throw std::runtime_error("The program goes on");
  return {program, [](HANDLE paused) {
            NtResumeProcess(paused);
            CloseHandle(paused);
          }};
}

std::vector<Window> WindowsOf(DWORD process) {
  std::vector<Window> all;
  EnumWindows(AddToWindows, reinterpret_cast<LPARAM>(&all));
  std::erase_if(all, [process](const Window& window) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window.handle(), &owner);
    return owner != process;
  });
  return all;
}

Program::Program(const std::string& commandLine) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  std::wstring wide = forms::Wide(commandLine);
  if (!CreateProcessW(nullptr, wide.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process_))
    throw std::runtime_error("Cannot start " + commandLine + ": " + std::to_string(GetLastError()));
}

Program::~Program() {
  Kill();
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

void Program::Kill() const {
  TerminateProcess(process_.hProcess, 1);
  WaitForSingleObject(process_.hProcess, kPatience);
}

std::optional<Window> Program::FindShown(const std::string& className) const {
  return FindTopLevel(process_.dwProcessId,
                      [&](Window window) { return window.ClassName() == className; });
}

Window Program::AwaitShown(const std::string& className) const {
  return *Await("window " + className, [&] { return FindShown(className); });
}

Message Program::AnswerMessage(int button) const {
  const Window box = *Await("message box", [&] {
    return FindTopLevel(process_.dwProcessId, [](Window window) {
      return window.ClassName() == kDialogClass && !FileDialog::Is(window) &&
             !BoxText(window).empty() && window.IsShown();  // No file dialog that is going.
    });
  });
  Message message = {box.Text(), BoxText(box)};
  if (!GetDlgItem(box.handle(), button))
    throw std::runtime_error("\"" + message.text + "\" has no such button");
  box.Control(button).ClickAndGoOn();
  Await("end of \"" + message.text + "\"", [&] { return !box.IsShown(); });
  return message;
}

FileDialog Program::AwaitFileDialog(const std::string& title) const {
  return FileDialog(*Await("file dialog \"" + title + "\"", [&] {
    return FindTopLevel(process_.dwProcessId, [&](Window window) {
      return FileDialog::Is(window) && window.Text() == title;
    });
  }));
}

DWORD Program::AwaitEnd() const {
  WaitForSingleObject(process_.hProcess, kPatience);
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  if (code == STILL_ACTIVE) throw std::runtime_error("The program does not end");
  return code;
}

}  // namespace driver
