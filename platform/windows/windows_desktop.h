#pragma once

#include "platform/desktop.h"

namespace platform {

/// The desktop of Windows.
class WindowsDesktop : public Desktop {
 public:
  bool ShellOpen(WindowHandle owner, const std::string& path, ShowCommand show) override;
  WindowHandle WindowTitled(const std::string& title) override;
  void BringToFront(WindowHandle window) override;
  bool ActivateTitled(const std::string& title) override;
  void KeyEvent(std::uint8_t virtualKey, std::uint32_t flags) override;
  std::int16_t ScanUnicodeKey(char16_t unit) override;
  std::int16_t ScanAnsiKey(char character) override;
  char ToAnsi(char16_t unit) override;
  std::uint32_t VersionWord() override;
  std::uint32_t MediaCommand(const std::string& command) override;
};

}  // namespace platform
