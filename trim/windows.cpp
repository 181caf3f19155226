#include <windows.h>

#include <atomic>

#include "platform/windows/windows_platform.h"
#include "trim/iso_date_text.h"
#include "trim/system.h"

namespace trim {
namespace {

std::atomic<bool> cancelled = false;

BOOL WINAPI Cancel(DWORD event) {
  cancelled = true;
  // Of the others the system ends the program as soon as this returns; its main thread does before.
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

struct System::Parts {
  explicit Parts(const std::string& target)
      : core{windows.bundle().files, windows.bundle().names, dates, windows.bundle().clock,
             windows.bundle().names.FolderOf(target)} {}

  platform::WindowsPlatform windows;
  IsoDateText dates;
  platform::Core core;
  UINT codePage = GetConsoleOutputCP();
};

System::System(const std::string& target) : parts_(std::make_unique<Parts>(target)) {
  SetConsoleCtrlHandler(Cancel, TRUE);
  SetConsoleOutputCP(CP_UTF8);
}

System::~System() {
  SetConsoleOutputCP(parts_->codePage);
}

platform::Core& System::core() const {
  return parts_->core;
}

bool System::IsCancelled() const {
  return cancelled;
}

int System::Columns() const {
  CONSOLE_SCREEN_BUFFER_INFO info;
  if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info)) return 0;
  return info.srWindow.Right - info.srWindow.Left + 1;
}

void System::KeepAwake() {
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
}

}  // namespace trim
