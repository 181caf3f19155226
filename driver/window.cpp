#include "driver/window.h"

#include <stdexcept>

#include "driver/await.h"
#include "forms/text.h"

namespace driver {
namespace {

constexpr int kLongestText = 4096;

}  // namespace

LRESULT Window::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutW(handle_, message, wParam, lParam, SMTO_NORMAL, kPatience, &answer) &&
      Exists())
    throw std::runtime_error("No answer to message " + std::to_string(message));
  return static_cast<LRESULT>(answer);
}

std::string Window::ClassName() const {
  wchar_t name[256] = L"";
  GetClassNameW(handle_, name, 256);
  return forms::Utf8(name);
}

// Wine never answers a question to a window that goes before it is heard: it is asked again.
std::string Window::Text() const {
  constexpr DWORD kForOneAnswer = 2'000;  // Milliseconds.
  std::wstring text(kLongestText, L'\0');
  DWORD_PTR length = 0;
  for (DWORD waited = 0; !SendMessageTimeoutW(handle_, WM_GETTEXT, kLongestText,
                                              reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL,
                                              kForOneAnswer, &length) &&
                         Exists();
       waited += kForOneAnswer)
    if (waited > kPatience) throw std::runtime_error("No answer to a question for a text");
  text.resize(length);
  return forms::Utf8(text);
}

std::string Window::Caption() const {
  std::wstring text(kLongestText, L'\0');
  text.resize(static_cast<std::size_t>(InternalGetWindowText(handle_, text.data(), kLongestText)));
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
  EnumChildWindows(
      handle_,
      [](HWND child, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<Window>*>(list)->emplace_back(child);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&controls));
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

}  // namespace driver
