#pragma once

#include <shobjidl.h>

#include <memory>

#include "forms/form.h"

/// What a window takes, and the system is told, while work goes on that takes its time.
namespace forms {

/// A form is at long work while this lives: the hourglass is over it, and keys, clicks and dropped
/// files are not for its controls. Its window can be moved, minimised and closed, and Esc asks the
/// work to stop. What was pressed and clicked meanwhile is gone afterwards as well: it was meant
/// for what the form showed before.
class Busy {
 public:
  explicit Busy(Form& form);
  ~Busy();
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

  /// Lets messages run; whether the work is to go on: the form is open, and Esc was not pressed.
  bool GoOn();

 private:
  friend class Form;
  friend bool TranslateForForm(MSG& message);

  /// Whether a message of the form is not to be handled.
  bool Drops(const MSG& message);

  Form& form_;
  bool stopped_ = false;
};

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

/// Keeps the machine awake while it lives, and makes the end of the Windows session wait: Windows
/// tells the user that a recording is being saved, and ends the session all the same only when the
/// user insists. At most one lives at a time.
class SystemHold {
 public:
  /// `window` is any of the program's.
  explicit SystemHold(HWND window);
  ~SystemHold();
  SystemHold(const SystemHold&) = delete;
  SystemHold& operator=(const SystemHold&) = delete;

  /// Whether one lives.
  static bool IsUp();

 private:
  HWND window_;
};

}  // namespace forms
