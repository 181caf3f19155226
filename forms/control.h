#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "forms/win32.h"
#include "platform/runtime_error.h"
#include "resources/layout.h"

namespace forms {

class Form;

/// What a control tells its form. The handler is a member function named control_event.
enum class Event {
  kClick,        ///< Button, check box, option button; a day picked in a calendar; a list's choice.
  kChange,       ///< A slider's value changed, by whomever.
  kScroll,       ///< The user moved a slider.
  kMonthChange,  ///< The user turned a calendar to another month.
  kYearChange,   ///< The user turned a calendar to another year.
  kTimer,        ///< A timer's interval has passed.
  kEnter,        ///< Enter was pressed in an up-down's box; else it is the default button's.
};

/// A control of a form: its state, kept in twips and UTF-8, and the window that shows it. The state
/// can be read and set at any time; while the form has no window, only the state changes. Shown is
/// a control that is visible itself and whose frame is shown; a control that is not shown or whose
/// frame is disabled is disabled in Windows' terms as well, so that its access key is dead.
class Control {
 public:
  /// A control of `form`, described by the row with this id in the form's layout.
  Control(Form& form, int id);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  int id() const { return row_->id; }
  const layout::Row& row() const { return *row_; }
  HWND window() const { return window_; }  ///< Null while the form has no window.

  void SetVisible(bool visible);
  bool Enabled() const { return enabled_; }
  virtual void SetEnabled(bool enabled);
  void SetLeft(int twips);
  void SetTop(int twips);
  void SetWidth(int twips);
  void SetHeight(int twips);
  /// Draws nothing anew when the caption stays the same.
  virtual void SetCaption(const std::string& caption);
  /// The text that shows when the mouse rests on the control; empty for none.
  virtual void SetToolTip(const std::string& text);
  /// A tool tip whose text is asked for when it is to show, of a disabled control, too, and of its
  /// label.
  void SetToolTipSource(std::function<std::string()> source);
  /// Gives the control the keyboard focus, when it is shown and enabled.
  void SetFocus();
  bool HasFocus() const;
  /// Visible, and in frames that are.
  bool IsShown() const;

 protected:
  friend class Form;

  /// The window class; null for a control without a window (a timer).
  virtual const wchar_t* WindowClass() const = 0;
  virtual DWORD WindowStyle() const { return 0; }
  virtual DWORD ExtendedStyle() const { return 0; }
  /// The window has just been made: hands it what the state holds beyond place and caption.
  virtual void Created() {}
  /// The window was laid out with its font, first after it was made.
  virtual void LaidOut() {}
  /// The window is about to go.
  virtual void Destroying() {}
  /// The form's window has come on the screen.
  virtual void FormShown() {}
  /// WM_COMMAND with this notification code.
  virtual void OnCommand(WORD /*code*/) {}
  /// WM_NOTIFY.
  virtual LRESULT OnNotify(const NMHDR& /*header*/) { return 0; }
  /// WM_TIMER.
  virtual void OnTimer() {}
  /// WM_HSCROLL or WM_VSCROLL with this scroll code.
  virtual void OnScroll(WORD /*code*/) {}
  /// A message of the control's own window, before the control itself sees it; its result, or none
  /// when the control is to handle it.
  virtual std::optional<LRESULT> OnMessage(UINT /*message*/, WPARAM, LPARAM) { return {}; }
  /// Where the window stands, pixels, that has this place in the layout.
  virtual RECT WindowPlace(RECT place) const { return place; }
  /// Of a push button: looks like the form's default button from now on, or no longer does.
  virtual void ShowAsDefault(bool /*on*/) {}

  /// Whether the form has a handler of this event.
  bool HasHandler(Event event) const;
  /// Runs the form's handler of an event, if it has one.
  void Raise(Event event);
  /// Sends a message to the window; 0 while there is none.
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  /// Lets the tool tip show where the mouse rests, or not, while another tip is up.
  void SetRestingToolTip(bool on);
  /// Moves the focus where an arrow key leads among controls with kArrows; false for nowhere.
  bool FollowArrow(WPARAM key);
  bool HasStyle(layout::Style style) const { return (row_->styles & style) != 0; }
  Form& form() const { return form_; }
  /// Pixels of a height in twips.
  int Pixels(int twips) const;
  const std::string& caption() const { return caption_; }
  /// The text in the window, or the caption while there is none.
  std::string WindowText() const;

 private:
  static LRESULT CALLBACK SubclassProcedure(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
  void CreateIn(HWND parent);
  /// Notes on which other controls this one depends.
  void Attach();
  /// Puts the window, and for a frame all that it holds, where the state has it.
  void Place();
  void PlaceWindow();
  /// Whether the arrow keys do not lead here from the control before it.
  bool BeginsGroup() const;
  RECT PixelRect() const;
  /// Gives the window its font and place anew.
  void LayOut();
  /// Shows, hides, enables or disables the window as the state and the frames around it have it.
  void Refresh();
  void RefreshWindow();
  bool IsUsable() const;
  /// Where the text of the tool tip is asked for, null for nowhere: by a label of its box.
  const std::function<std::string()>* ToolTipSource() const;
  void LeaveFocus();
  void GotFocus();
  class ArrowGroup* Group() const;

  Form& form_;
  const layout::Row* row_;
  Control* container_ = nullptr;
  Control* box_ = nullptr;            ///< Whose label this is.
  std::vector<Control*> dependents_;  ///< What stands in this frame, or is this box's label.
  HWND window_ = nullptr;
  std::string caption_;
  std::string toolTip_;
  std::function<std::string()> toolTipSource_;
  int left_, top_, width_, height_;
  bool visible_, enabled_;
};

/// Controls of one kind whose ids run on from a base: element i has the id base + i. The indices
/// need not start at 0 (a first index of 1 leaves the base id free).
template <typename T>
class ControlArray {
 public:
  ControlArray(Form& form, int base, int first, int last) : first_(first) {
    for (int i = first; i <= last; ++i) elements_.push_back(std::make_unique<T>(form, base + i));
  }

  /// The element with this index. An index outside is a RuntimeError.
  T& operator()(int index) const {
    if (index < first_ || index > last()) throw RuntimeError::SubscriptOutOfRange("ControlArray");
    return *elements_[static_cast<std::size_t>(index - first_)];
  }
  int first() const { return first_; }
  int last() const { return first_ + static_cast<int>(elements_.size()) - 1; }

 private:
  int first_;
  std::vector<std::unique_ptr<T>> elements_;
};

}  // namespace forms
