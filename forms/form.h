#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "forms/arrow_group.h"
#include "forms/dialogs.h"
#include "forms/event_table.h"
#include "forms/form_place.h"
#include "forms/tool_tips.h"

namespace forms {

class Busy;

/// A window made of a layout table. A window class derives from it, holds its controls as members
/// (`TextBox Text1{*this, IDC_frmTrimbrook_Text1};`; rows without a member get a plain control) and
/// binds its handlers in its constructor. A form has one life: loaded once, shown, closed.
///
/// Handlers run in one place: what leaves one as a RuntimeError is shown in a box, and the program
/// goes on. A form that is closed while one of its handlers runs (the handler let messages run)
/// hides at once; its window goes when the outermost handler has returned, so that until then calls
/// to its controls are harmless. Such a handler asks `IsClosed` and returns.
class Form : protected EventTable {
 public:
  explicit Form(const layout::Form& layout) : layout_(layout), place_(layout) {}
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form();

  /// Makes the window and runs `OnLoad`. Shows nothing yet. False when the load closed the form or
  /// failed, which has been told then.
  bool Load(Form* owner = nullptr);
  /// Loads if need be and shows the window.
  void Show();
  /// Shows the window over its owner, which is disabled, and comes back when it is closed.
  void ShowModal(Form& owner);
  /// Closes the window unless `OnQueryUnload` refuses.
  void Close();
  /// Closes the window without asking.
  void Unload();
  /// Not loaded yet, or closed, if only a running handler keeps its window alive.
  bool IsClosed() const { return !window_ || closing_; }

  HWND window() const { return window_; }
  FormPlace& place() { return place_; }
  /// Shows the hourglass over the form, or the usual pointer again; acts at once.
  void SetHourglass(bool on);
  /// Draws attention to the window's taskbar button while the program is in the background.
  void FlashTaskbar();

  /// A modal box of this window with an OK button.
  void ShowMessage(const std::string& text, Tone tone = Tone::kWarning);
  /// The same with the application's title instead of "Message", about something that failed.
  void ShowApplicationMessage(const std::string& text);
  /// A modal question of this window with Yes and No; true for Yes. The one that Enter gives is
  /// `presumed`.
  bool AskYesNo(const std::string& text, bool presumed = true);
  /// The same with Yes, which Enter gives, No and Cancel; none for Cancel.
  std::optional<bool> AskYesNoCancel(const std::string& text);

  /// The control with this id.
  Control& ControlById(int id);
  /// The control that has the keyboard focus; null when none of this form has.
  Control* FocusedControl() const;

 protected:
  /// The window is there, not shown yet: sets up what it shows.
  virtual void OnLoad() {}
  /// Whether the user may close the window now, by its title bar, Esc or Alt+F4.
  virtual bool OnQueryUnload() { return true; }
  /// The window is being closed; its controls can still be read.
  virtual void OnUnload() {}
  /// A file was dropped onto the window, which has asked for that by `DragAcceptFiles`.
  virtual void OnFileDropped(const std::string& /*path*/) {}
  /// The Windows session ends; the program may be gone as soon as this has returned. Comes while
  /// a box or another window is above, too.
  virtual void OnEndSession() {}

  /// Runs what a handler does in the one place that catches its faults and keeps the window alive
  /// while it runs. For work that no event starts.
  void Dispatch(const std::function<void()>& work);

 private:
  friend class Busy;
  friend class Control;
  friend bool TranslateForForm(MSG& message);

  static LRESULT CALLBACK WindowProcedure(HWND, UINT, WPARAM, LPARAM);
  static Form* FromWindow(HWND window);
  /// Handles a message of the window; none for those that Windows' own dialog procedure handles.
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void OnCommandMessage(WORD id, WORD code);
  void GiveToolTip(NMTTDISPINFOW& question);
  void OnDropMessage(HDROP drop);
  void OnSettingChange(WPARAM setting);
  /// A command of the title bar, its menu or the taskbar; `key` is that which opens a menu.
  std::optional<LRESULT> OnSystemCommand(WPARAM command, LPARAM key);
  bool PressKey(const MSG& message);
  void PressCancel();

  void CreateWindows();
  void CreateControls();
  /// Sizes, places and fonts for this DPI and from what the system has now.
  void LayOut(UINT dpi);
  void RunUntilClosed();
  void Hide();
  void Destroy();
  void WindowGone();
  void FocusFirst();
  void MarkDefaultButton(const Control* focused);
  Control* FindControl(int id) const;
  HWND VisibleWindow() const;
  /// The form, box or dialog of the program that can be used, where others are disabled; null for
  /// none.
  static HWND WindowAbove();

  const layout::Form& layout_;
  FormPlace place_;
  HWND window_ = nullptr;
  Form* owner_ = nullptr;
  ToolTips toolTips_;
  std::wstring tipText_;  ///< The one that was asked for last.
  std::map<int, Control*> byId_;
  std::vector<Control*> inOrder_;                   ///< Rows' order; complete once loaded.
  std::vector<std::unique_ptr<Control>> nameless_;  ///< Those without a member.
  std::map<int, ArrowGroup> groups_;                ///< By the frame that holds them.
  int defaultButton_ = 0;  ///< Id of the button that Enter presses, 0 for none.

  int running_ = 0;      ///< Handlers of this form that are on the stack.
  bool failed_ = false;  ///< The load was left by a fault.
  bool closing_ = false;
  bool wasForeground_ = false;  ///< When it was hidden.
  bool outdated_ = false;       ///< The system's settings changed while it was minimised.
  bool hourglass_ = false;
  Busy* busy_ = nullptr;           ///< Null when the form is not at long work.
  HWND ownersFocus_ = nullptr;     ///< What had the focus when this opened as a modal window.
  Control* firstFocus_ = nullptr;  ///< What asked for the focus before the window was shown.
};

}  // namespace forms
