#include "forms/taskbar.h"

namespace forms {
namespace {

constexpr int kWhole = 100;

TaskbarProgress* shown = nullptr;

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

}  // namespace forms
