#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace driver {

/// How long a condition may take to come true, in milliseconds: far longer than ever needed, so
/// that a busy machine or a slow disk fails no test.
inline constexpr DWORD kPatience = 120'000;

/// Raises an error that says what did not come, and leaves a picture of the screen.
[[noreturn]] void RaiseTimeout(const std::string& what);

/// Polls a condition until it holds and answers what it answered. Raises when it never does.
template <typename Condition>
auto Await(const std::string& what, Condition condition) {
  const ULONGLONG deadline = GetTickCount64() + kPatience;
  for (;;) {
    if (auto result = condition()) return result;
    if (GetTickCount64() > deadline) RaiseTimeout(what);
    Sleep(2);
  }
}

/// A window or control of another process, worked as its user works it. Texts are UTF-8. What
/// cannot be done raises `std::runtime_error`.
class Window {
 public:
  explicit Window(HWND handle) : handle_(handle) {}

  HWND handle() const { return handle_; }
  bool IsShown() const { return IsWindowVisible(handle_) != FALSE; }
  bool IsEnabled() const { return IsWindowEnabled(handle_) != FALSE; }
  bool IsUsable() const { return IsShown() && IsEnabled(); }
  std::string ClassName() const;
  /// Its text. Only of a box to type into or to choose from is the program asked: of all others the
  /// system knows it, so that the program may stand still, or be about to end.
  std::string Text() const;
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

/// Adds a window that the system enumerates to a vector of `Window`.
BOOL CALLBACK AddToWindows(HWND handle, LPARAM windows);
/// Brings a window to the front and waits until it is there.
void BringToFront(const Window& window);
/// Waits until a control has the keyboard focus; its window comes to the front for that.
void AwaitFocus(const Window& control);
/// Clicks in the middle of a control twice with the real mouse, as fast as a double click by the
/// time that the presses carry, however long the machine takes for them.
void DoubleClickOn(const Window& control);
/// Presses a key at the real keyboard, or releases it (KEYEVENTF_KEYUP), at a time in milliseconds
/// as `GetTickCount` has it.
void SendKey(BYTE virtualKey, DWORD flags, DWORD time = GetTickCount());
/// Presses and releases a key at once, at such a time.
void TapKey(BYTE virtualKey, DWORD time);
/// Presses keys together at the real keyboard, the first one longest, with a window in front, until
/// they have their effect: what is pressed while the window in front changes is lost.
void PressUntil(const std::string& what, const Window& window, const std::vector<BYTE>& virtualKeys,
                const std::function<bool()>& condition);

}  // namespace driver
