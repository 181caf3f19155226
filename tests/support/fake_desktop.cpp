#include "tests/support/fake_desktop.h"

#include <string_view>

using platform::WindowHandle;

namespace {

constexpr std::int16_t kShift = 0x100;

/// The keys that give other characters than letters, without and with Shift: digits from virtual
/// key '0' on, and brackets.
constexpr std::u16string_view kPlain = u"0123456789[\\]";
constexpr std::u16string_view kShifted = u")!@#$%^&*({|}";
constexpr std::string_view kKeys = "0123456789\xDB\xDC\xDD";

std::string Hex(std::uint8_t value) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  return {kDigits[value >> 4], kDigits[value & 15]};
}

}  // namespace

bool FakeDesktop::ShellOpen(WindowHandle, const std::string& path, platform::ShowCommand) {
  log.push_back("open " + path);
  return true;
}

WindowHandle FakeDesktop::WindowTitled(const std::string& title) {
  onLook(title);
  if (windows.count(title) == 0) return WindowHandle::kNone;
  titles_.push_back(title);
  return static_cast<WindowHandle>(titles_.size());
}

void FakeDesktop::BringToFront(WindowHandle window) {
  log.push_back("front " + titles_.at(static_cast<std::size_t>(window) - 1));
}

bool FakeDesktop::ActivateTitled(const std::string& title) {
  onLook(title);
  log.push_back("activate " + title);
  return windows.count(title) > 0;
}

void FakeDesktop::KeyEvent(std::uint8_t virtualKey, std::uint32_t flags) {
  log.push_back((flags & 2 ? "-" : "+") + Hex(virtualKey) + (flags & 1 ? "" : " plain"));
}

std::int16_t FakeDesktop::ScanUnicodeKey(char16_t unit) {
  if (unit == ' ' || unit == '\r' || unit == '\t') return static_cast<std::int16_t>(unit);
  if (unit >= 'a' && unit <= 'z') return static_cast<std::int16_t>(unit - 'a' + 'A');
  if (unit >= 'A' && unit <= 'Z') return static_cast<std::int16_t>(unit | kShift);
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    const auto key = static_cast<std::uint8_t>(kKeys[i]);
    if (unit == kPlain[i]) return key;
    if (unit == kShifted[i]) return key | kShift;
  }
  return -1;
}

std::uint32_t FakeDesktop::MediaCommand(const std::string& command) {
  log.push_back("media " + command);
  return 0;
}
