#pragma once

#include <shobjidl.h>

#include <memory>

#include "forms/win32.h"

namespace forms {

/// How far long work is, shown on the program's button in the taskbar while this lives: green, and
/// yellow while a message box waits for an answer. At most one lives at a time.
class TaskbarProgress {
 public:
  /// `window` is any of the program's; modal windows share the button of the main window.
  explicit TaskbarProgress(HWND window);
  TaskbarProgress(const TaskbarProgress&) = delete;
  TaskbarProgress& operator=(const TaskbarProgress&) = delete;
  ~TaskbarProgress();

  /// Shows a percentage, 0 to 100.
  void SetValue(int percent);
  /// Makes the whole button red: the work has failed.
  void ShowFailed();

 private:
  friend class TaskbarPause;
  void SetState(TBPFLAG state);

  struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
  };
  std::unique_ptr<ITaskbarList3, Release> taskbar_;  ///< Null on a desktop without a taskbar.
  HWND button_;
  int percent_ = -1;
  TBPFLAG state_ = TBPF_NORMAL;
};

/// Makes the button yellow while it lives, unless it is red: the work waits for an answer.
class TaskbarPause {
 public:
  TaskbarPause();
  TaskbarPause(const TaskbarPause&) = delete;
  TaskbarPause& operator=(const TaskbarPause&) = delete;
  ~TaskbarPause();
};

}  // namespace forms
