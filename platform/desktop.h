#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// A top-level window of any program.
enum class WindowHandle : std::uintptr_t { kNone = 0 };

/// How a program or document that is opened shows itself.
enum class ShowCommand : int { kNormal = 1, kDefault = 10 };

/// The desktop's other programs, its keyboard and its media devices.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// Asks the shell to open a document or start a program, with `owner` as the owner of any box.
  virtual bool ShellOpen(WindowHandle owner, const std::string& path, ShowCommand show) = 0;
  /// The top-level window whose title is exactly `title`, letter case included.
  virtual WindowHandle WindowTitled(const std::string& title) = 0;
  /// Brings a window to the foreground.
  virtual void BringToFront(WindowHandle window) = 0;
  /// Activates the application whose window has exactly this title, without waiting for it. False
  /// when there is none.
  virtual bool ActivateTitled(const std::string& title) = 0;
  /// Puts one key event into the input of whatever has the focus. `flags`: 1 extended, 2 key up.
  virtual void KeyEvent(std::uint8_t virtualKey, std::uint32_t flags) = 0;
  /// Virtual key (low byte) and shift state (high byte) that give a UTF-16 unit; -1 when none.
  virtual std::int16_t ScanUnicodeKey(char16_t unit) = 0;
  /// The same for a character of the system's code page.
  virtual std::int16_t ScanAnsiKey(char character) = 0;
  /// The first byte of a UTF-16 unit in the system's code page.
  virtual char ToAnsi(char16_t unit) = 0;
  /// The platform's version word; its top bit marks the older, non-Unicode family.
  virtual std::uint32_t VersionWord() = 0;
  /// Sends a command to the media control interface and waits for its result, 0 for success.
  virtual std::uint32_t MediaCommand(const std::string& command) = 0;
};

}  // namespace platform
