#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "forms/control.h"
#include "forms/control_array.h"

namespace forms {

inline constexpr int kTwipsPerInch = 1440;

class Busy;

/// A window made of a layout table. A window class derives from it, holds its controls as members
/// (`TextBox Text1{*this, IDC_frmTrimbrook_Text1};`; rows without a member get a plain control) and
/// binds its handlers in its constructor. A form has one life: loaded once, shown, closed.
///
/// Handlers run in one place: what leaves one as a RuntimeError is shown in a box, and the program
/// goes on. A form that is closed while one of its handlers runs (the handler let messages run)
/// hides at once; its window goes when the outermost handler has returned, so that until then calls
/// to its controls are harmless. Such a handler asks `IsClosed` and returns.
class Form {
 public:
  explicit Form(const layout::Form& layout);
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
  /// Dots per inch of the monitor that the window is on.
  UINT dpi() const { return dpi_; }

  void SetCaption(const std::string& caption);
  /// Where the window begins, twips.
  int Top() const;
  /// Sets the height of the whole window with its frame, in twips. A window that would stand off
  /// the work area moves up; one that does not fit it is made as high as that is, and scrolls.
  void SetHeight(int twips);
  /// Moves the window up (negative) or down, its title bar never off the work area.
  void MoveBy(int twips);
  /// Puts the window in the middle of its owner, or of the work area without one.
  void Center();
  /// Shows the hourglass over the form, or the usual pointer again; acts at once.
  void SetHourglass(bool on);
  bool Hourglass() const { return hourglass_; }
  /// Draws attention to the window's taskbar button while the program is in the background.
  void FlashTaskbar();

  /// A modal box of this window with an OK button.
  void ShowMessage(const std::string& text);
  /// The same with the application's title instead of "Message".
  void ShowApplicationMessage(const std::string& text);
  /// A modal question of this window with Yes and No; true for Yes. The one that Enter gives is
  /// `presumed`.
  bool AskYesNo(const std::string& text, bool presumed = true);

  /// The control with this id.
  Control& ControlById(int id);
  /// The control that has the keyboard focus; null when none of this form has.
  Control* FocusedControl() const;

 protected:
  /// One line of the event table.
  struct Binding {
    const Control& control;
    Event event;
    std::function<void()> handler;
  };
  /// A key with its modifiers (a sum of FCONTROL, FSHIFT, FALT) and what it does.
  struct Key {
    BYTE modifiers;
    WORD virtualKey;
    std::function<void()> handler;
    bool inText = true;  ///< Also while the focus is in a text box, which may have a use for it.
  };

  /// The event table; called once, in the constructor of the window class.
  void Bind(std::initializer_list<Binding> bindings);
  /// Binds an event of every element of a control array; the handler gets the index.
  template <typename T>
  void BindArray(const ControlArray<T>& array, Event event,
                 const std::function<void(int)>& handler) {
    for (int i = array.first(); i <= array.last(); ++i)
      BindOne(array(i), event, [handler, i] { handler(i); });
  }
  /// Keys beyond those of the dialog manager.
  void BindKeys(std::vector<Key> keys);

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

  void BindOne(const Control& control, Event event, std::function<void()> handler);
  bool Raise(const Control& control, Event event);
  bool HasHandler(const Control& control, Event event) const;

  static LRESULT CALLBACK WindowProcedure(HWND, UINT, WPARAM, LPARAM);
  static Form* FromWindow(HWND window);
  /// Handles a message of the window; none for those that Windows' own dialog procedure handles.
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void OnCommandMessage(WORD id, WORD code);
  LRESULT OnNotifyMessage(const NMHDR& header);
  bool PressKey(const MSG& message);
  void OnDropMessage(HDROP drop);
  void OnTimerMessage(WPARAM id);
  void OnScrollMessage(UINT message, WPARAM wParam, LPARAM lParam);
  /// A command of the title bar, its menu or the taskbar; `key` is that which opens a menu.
  std::optional<LRESULT> OnSystemCommand(WPARAM command, LPARAM key);
  void OnDpiChanged(UINT dpi, const RECT& suggested);
  /// Sizes, places and fonts for this DPI and from what the system has now.
  void LayOutAnew(UINT dpi);
  void OnTextSizeChanged();
  void TakeDpi(UINT dpi);

  void CreateWindows();
  void CreateControls();
  void Hide();
  void Destroy();
  void WindowGone();
  void RunUntilClosed();
  void FocusFirst();
  void MarkDefaultButton(const Control* focused);
  void OnWheel(int delta);
  void AimWheel(MSG& message) const;
  void PressCancel();
  HWND VisibleWindow() const;

  int PixelsAcross(int twips) const;
  int PixelsDown(int twips) const;
  void MoveTo(int left, int top);
  SIZE FrameSize() const;
  SIZE WantedSize() const;
  RECT WorkArea() const;
  void FitWindow();
  void PlaceControls();
  void FitScrollBars();
  void ScrollTo(int x, int y);
  void ScrollIntoView(const Control& control);
  RECT PixelRect(const Control& control) const;

  struct State;
  std::unique_ptr<State> state_;
  HWND window_ = nullptr;
  Form* owner_ = nullptr;
  UINT dpi_ = 96;
  bool closing_ = false;
  bool hourglass_ = false;
  Busy* busy_ = nullptr;  ///< Null when the form is not at long work.
};

}  // namespace forms
