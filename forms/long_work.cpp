#include "forms/long_work.h"

#include "forms/application.h"
#include "forms/input.h"

namespace forms {
namespace {

constexpr int kWhole = 100;

TaskbarProgress* shown = nullptr;
bool systemIsHeld = false;

ITaskbarList3* FindTaskbar() {
  void* found = nullptr;
  if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                              &found)))
    return nullptr;
  auto* taskbar = static_cast<ITaskbarList3*>(found);
  if (SUCCEEDED(taskbar->HrInit())) return taskbar;
  taskbar->Release();
  return nullptr;
}

}  // namespace

Busy::Busy(Form& form) : form_(form) {
  form_.busy_ = this;
  form_.SetHourglass(true);
}

Busy::~Busy() {
  DiscardPendingInput();
  form_.busy_ = nullptr;
  form_.SetHourglass(false);
}

bool Busy::GoOn() {
  DoEvents();
  return !stopped_ && !form_.IsClosed();
}

bool Busy::Drops(const MSG& message) {
  if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) stopped_ = true;
  // Alt+F4 closes the window. A tap of Alt would open its menu, and all would stand still.
  const bool closes = message.message == WM_SYSKEYDOWN && message.wParam == VK_F4;
  const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  const bool isMouse = message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST;
  return (isKey && !closes) || isMouse;
}

TaskbarProgress::TaskbarProgress(HWND window)
    : taskbar_(FindTaskbar()), button_(GetAncestor(window, GA_ROOTOWNER)) {
  shown = this;
  SetValue(0);
}

TaskbarProgress::~TaskbarProgress() {
  shown = nullptr;
  SetState(TBPF_NOPROGRESS);
}

void TaskbarProgress::SetValue(int percent) {
  if (percent == percent_) return;
  percent_ = percent;
  if (taskbar_) taskbar_->SetProgressValue(button_, static_cast<ULONGLONG>(percent), kWhole);
}

void TaskbarProgress::ShowFailed() {
  SetValue(kWhole);
  SetState(TBPF_ERROR);
}

void TaskbarProgress::SetState(TBPFLAG state) {
  state_ = state;
  if (taskbar_) taskbar_->SetProgressState(button_, state);
}

TaskbarPause::TaskbarPause() {
  if (shown && shown->state_ == TBPF_NORMAL) shown->SetState(TBPF_PAUSED);
}

TaskbarPause::~TaskbarPause() {
  if (shown && shown->state_ == TBPF_PAUSED) shown->SetState(TBPF_NORMAL);
}

SystemHold::SystemHold(HWND window) : window_(GetAncestor(window, GA_ROOTOWNER)) {
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
  ShutdownBlockReasonCreate(window_, L"A recording is being saved.");
  systemIsHeld = true;
}

SystemHold::~SystemHold() {
  SetThreadExecutionState(ES_CONTINUOUS);
  ShutdownBlockReasonDestroy(window_);
  systemIsHeld = false;
}

bool SystemHold::IsUp() {
  return systemIsHeld;
}

}  // namespace forms
