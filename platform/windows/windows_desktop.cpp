#include "platform/windows/factories.h"

#include "platform/windows/text.h"
#include "platform/windows/win32.h"
// After windows.h, which they need.
#include <mmsystem.h>
#include <shellapi.h>

namespace platform {
namespace {

HWND Window(WindowHandle window) {
  return reinterpret_cast<HWND>(static_cast<UINT_PTR>(window));
}

bool HasTitle(HWND window, const std::wstring& title) {
  // One unit more than the title has, so that a longer one is not taken for it.
  std::wstring text(title.size() + 2, L'\0');
  const int units = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  return text.compare(0, static_cast<std::size_t>(units), title) == 0;
}

/// The system's call for media commands; null when there is none. Its library is none of those that
/// Windows itself has always loaded: one of that name beside the program must not take its place.
decltype(&mciSendStringW) MediaControl() {
  const HMODULE library = LoadLibraryExW(L"winmm.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (!library) return nullptr;
  auto* call = reinterpret_cast<void*>(GetProcAddress(library, "mciSendStringW"));
  return reinterpret_cast<decltype(&mciSendStringW)>(call);
}

class WindowsDesktop : public Desktop {
 public:
  bool ShellOpen(WindowHandle owner, const std::string& path, ShowCommand show) override {
    constexpr INT_PTR kLastError = 32;
    const HINSTANCE answer = ShellExecuteW(Window(owner), L"open", Wide(path).c_str(), nullptr,
                                           nullptr, static_cast<int>(show));
    return reinterpret_cast<INT_PTR>(answer) > kLastError;
  }

  // The system compares titles without regard to letter case: what it finds is looked at, and the
  // search goes on behind it.
  WindowHandle WindowTitled(const std::string& title) override {
    const std::wstring wide = Wide(title);
    HWND window = FindWindowW(nullptr, wide.c_str());
    while (window && !HasTitle(window, wide))
      window = FindWindowExW(nullptr, window, nullptr, wide.c_str());
    return static_cast<WindowHandle>(reinterpret_cast<UINT_PTR>(window));
  }

  void BringToFront(WindowHandle window) override {
    // Without waiting: the other program may be busy.
    if (IsIconic(Window(window))) ShowWindowAsync(Window(window), SW_RESTORE);
    SetForegroundWindow(Window(window));
  }

  bool ActivateTitled(const std::string& title) override {
    const WindowHandle window = WindowTitled(title);
    if (window == WindowHandle::kNone) return false;
    BringToFront(window);
    return true;
  }

  void KeyEvent(std::uint8_t virtualKey, std::uint32_t flags) override {
    keybd_event(virtualKey, 0, flags, 0);
  }

  std::int16_t ScanUnicodeKey(char16_t unit) override {
    return VkKeyScanW(static_cast<wchar_t>(unit));
  }

  std::int16_t ScanAnsiKey(char character) override { return VkKeyScanA(character); }

  char ToAnsi(char16_t unit) override {
    const wchar_t wide = static_cast<wchar_t>(unit);
    char bytes[8] = {};
    WideCharToMultiByte(CP_ACP, 0, &wide, 1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes[0];
  }

  std::uint32_t VersionWord() override { return GetVersion(); }

  std::uint32_t MediaCommand(const std::string& command) override {
    static const auto send = MediaControl();
    if (!send) return MCIERR_CANNOT_LOAD_DRIVER;
    return send(Wide(command).c_str(), nullptr, 0, nullptr);
  }
};

}  // namespace

std::unique_ptr<Desktop> MakeWindowsDesktop() {
  return std::make_unique<WindowsDesktop>();
}

}  // namespace platform
