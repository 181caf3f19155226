#include "driver/window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "driver/files.h"
#include "forms/win32.h"

namespace driver {

void RaiseTimeout(const std::string& what) {
  std::string name = "stuck";
  if (const auto* test = testing::UnitTest::GetInstance()->current_test_info())
    name += std::string(" ") + test->test_suite_name() + " " + test->name();
  std::replace(name.begin(), name.end(), '/', ' ');
  SaveScreenshot(name);
  throw std::runtime_error("Waited in vain: " + what);
}

BOOL CALLBACK AddToWindows(HWND handle, LPARAM windows) {
  reinterpret_cast<std::vector<Window>*>(windows)->emplace_back(handle);
  return TRUE;
}

LRESULT Window::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutW(handle_, message, wParam, lParam, SMTO_NORMAL, kPatience, &answer) &&
      IsWindow(handle_))
    throw std::runtime_error("No answer to message " + std::to_string(message));
  return static_cast<LRESULT>(answer);
}

std::string Window::ClassName() const {
  wchar_t name[256] = L"";
  GetClassNameW(handle_, name, 256);
  return forms::Utf8(name);
}

std::string Window::Text() const {
  constexpr int kLongestText = 4096;
  const std::string kind = ClassName();
  const bool isKeptByItself = kind == "Edit" || kind.starts_with("ComboBox");
  std::wstring text(kLongestText, L'\0');
  const LRESULT length = isKeptByItself
                             ? Ask(WM_GETTEXT, kLongestText, reinterpret_cast<LPARAM>(text.data()))
                             : InternalGetWindowText(handle_, text.data(), kLongestText);
  text.resize(static_cast<std::size_t>(length));
  return forms::Utf8(text);
}

void Window::SetText(const std::string& text) const {
  Ask(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(forms::Wide(text).c_str()));
}

RECT Window::Place() const {
  RECT place = {};
  GetWindowRect(handle_, &place);
  return place;
}

std::vector<Window> Window::Controls() const {
  std::vector<Window> controls;
  EnumChildWindows(handle_, AddToWindows, reinterpret_cast<LPARAM>(&controls));
  return controls;
}

Window Window::Control(int id) const {
  if (const HWND child = GetDlgItem(handle_, id)) return Window(child);
  for (const Window& control : Controls())
    if (GetDlgCtrlID(control.handle()) == id) return control;
  throw std::runtime_error(ClassName() + " has no control " + std::to_string(id));
}

void Window::RequireUsable() const {
  if (!IsUsable()) throw std::runtime_error("\"" + Text() + "\" is hidden or disabled");
}

void Window::Click() const {
  RequireUsable();
  Ask(BM_CLICK);
}

void Window::ClickAndGoOn() const {
  RequireUsable();
  PostMessageW(handle_, BM_CLICK, 0, 0);
}

void Window::Tick(bool ticked) const {
  if (IsTicked() != ticked) Click();
}

void Window::Press(WORD virtualKey) const {
  RequireUsable();
  Ask(WM_KEYDOWN, virtualKey);
  Ask(WM_KEYUP, virtualKey);
}

void Window::PressAndGoOn(WORD virtualKey) const {
  RequireUsable();
  PostMessageW(handle_, WM_KEYDOWN, virtualKey, 0);
  PostMessageW(handle_, WM_KEYUP, virtualKey, 0);
}

void BringToFront(const Window& window) {
  Await("window in front", [&] {
    SetForegroundWindow(window.handle());
    return GetForegroundWindow() == window.handle();
  });
}

void AwaitFocus(const Window& control) {
  const HWND window = GetAncestor(control.handle(), GA_ROOT);
  Await("focus", [&] {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    if (!info.hwndFocus) SetForegroundWindow(window);
    return info.hwndFocus == control.handle();
  });
}

// The place goes with the click, too: a program that sees the mouse move late puts it back.
void DoubleClickOn(const Window& control) {
  constexpr int kWholeScreen = 65'536;
  const RECT place = control.Place();
  const int x = (place.left + place.right) / 2;
  const int y = (place.top + place.bottom) / 2;
  SetCursorPos(x, y);
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dx = MulDiv(x, kWholeScreen, GetSystemMetrics(SM_CXSCREEN));
  input.mi.dy = MulDiv(y, kWholeScreen, GetSystemMetrics(SM_CYSCREEN));
  const DWORD first = GetTickCount();
  for (const DWORD time : {first, first + GetDoubleClickTime() / 4})
    for (const DWORD button : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
      input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | button;
      input.mi.time = time;
      SendInput(1, &input, sizeof input);
    }
}

void SendKey(BYTE virtualKey, DWORD flags, DWORD time) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtualKey;
  input.ki.dwFlags = flags;
  input.ki.time = time;
  SendInput(1, &input, sizeof input);
}

void TapKey(BYTE virtualKey, DWORD time) {
  SendKey(virtualKey, 0, time);
  SendKey(virtualKey, KEYEVENTF_KEYUP, time);
}

void PressUntil(const std::string& what, const Window& window, const std::vector<BYTE>& virtualKeys,
                const std::function<bool()>& condition) {
  constexpr int kPollsBetween = 1000;
  BringToFront(window);
  const auto press = [&] {
    SetForegroundWindow(window.handle());
    for (const BYTE key : virtualKeys) SendKey(key, 0);
    for (auto key = virtualKeys.rbegin(); key != virtualKeys.rend(); ++key)
      SendKey(*key, KEYEVENTF_KEYUP);
  };
  Await(what, [&, polls = 0]() mutable {
    if (polls++ % kPollsBetween == 0) press();
    return condition();
  });
}

}  // namespace driver
