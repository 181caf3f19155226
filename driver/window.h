#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace driver {

/// A window or control of another process, worked as its user works it. Texts are UTF-8. What
/// cannot be done raises `std::runtime_error`.
class Window {
 public:
  explicit Window(HWND handle) : handle_(handle) {}

  HWND handle() const { return handle_; }
  bool Exists() const { return IsWindow(handle_) != FALSE; }
  bool IsShown() const { return IsWindowVisible(handle_) != FALSE; }
  bool IsEnabled() const { return IsWindowEnabled(handle_) != FALSE; }
  bool IsUsable() const { return IsShown() && IsEnabled(); }
  std::string ClassName() const;
  std::string Text() const;
  /// The same from the system's notes, without asking the window's program: it may stand still.
  /// Labels and buttons only.
  std::string Caption() const;
  void SetText(const std::string& text) const;
  /// Place on the screen in pixels.
  RECT Place() const;

  /// The control with this id, the window's own before those at any depth.
  Window Control(int id) const;
  /// All controls, at any depth.
  std::vector<Window> Controls() const;

  /// Clicks a button that is shown and enabled, and comes back when its handler has run.
  void Click() const;
  /// The same without waiting, for a click that opens a modal window.
  void ClickAndGoOn() const;
  bool IsTicked() const { return Ask(BM_GETCHECK) == BST_CHECKED; }
  /// Ticks or clears a check box by a click, when it stands otherwise.
  void Tick(bool ticked) const;
  /// Presses a key in the control and comes back when it has been handled.
  void Press(WORD virtualKey) const;
  /// The same without waiting, for a key that opens a modal window.
  void PressAndGoOn(WORD virtualKey) const;
  /// Asks the window to close, as its title bar's button does.
  void Close() const { PostMessageW(handle_, WM_CLOSE, 0, 0); }

  /// Sends a message and waits for its answer; 0 when the window goes meanwhile.
  LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

 private:
  void RequireUsable() const;

  HWND handle_;
};

}  // namespace driver
