#include "tests/support/fake_desktop.h"

#include <string_view>

using platform::WindowHandle;

namespace {

constexpr std::int16_t kShift = 0x100;

/// The keys that give other characters than letters, without and with Shift, in the order of their
/// virtual keys.
constexpr std::u16string_view kPlain = u"0123456789;=,-./`[\\]'";
constexpr std::u16string_view kShifted = u")!@#$%^&*(:+<_>?~{|}\"";

std::int16_t VirtualKey(std::size_t place) {
  constexpr std::size_t kSemicolon = 10, kBracket = 17;
  if (place < kSemicolon) return static_cast<std::int16_t>('0' + place);
  return static_cast<std::int16_t>(place < kBracket ? 0xBA + place - kSemicolon
                                                    : 0xDB + place - kBracket);
}

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
  log.push_back((flags & 2 ? "up " : "down ") + Hex(virtualKey) + (flags & 1 ? " extended" : ""));
}

std::int16_t FakeDesktop::ScanUnicodeKey(char16_t unit) {
  if (unit == ' ' || unit == '\r' || unit == '\t') return static_cast<std::int16_t>(unit);
  if (unit >= 'a' && unit <= 'z') return static_cast<std::int16_t>(unit - 'a' + 'A');
  if (unit >= 'A' && unit <= 'Z') return static_cast<std::int16_t>(unit | kShift);
  if (const auto place = kPlain.find(unit); place != kPlain.npos) return VirtualKey(place);
  if (const auto place = kShifted.find(unit); place != kShifted.npos)
    return static_cast<std::int16_t>(VirtualKey(place) | kShift);
  return -1;
}

std::int16_t FakeDesktop::ScanAnsiKey(char character) {
  return ScanUnicodeKey(static_cast<unsigned char>(character));
}

char FakeDesktop::ToAnsi(char16_t unit) {
  return unit < 256 ? static_cast<char>(unit) : '?';
}

std::uint32_t FakeDesktop::MediaCommand(const std::string& command) {
  log.push_back("media " + command);
  return 0;
}

std::optional<platform::RegistryValue> FakeRegistry::Query(platform::RegistryRoot root,
                                                           const std::string& keyPath,
                                                           const std::string& valueName) {
  const auto found = values.find({root, keyPath, valueName});
  return found == values.end() ? std::nullopt : std::optional(found->second);
}
