#include "tests/support/fake_desktop.h"

#include <algorithm>
#include <string_view>

using platform::WindowHandle;

namespace {

constexpr std::int16_t kShift = 0x100;

struct Key {
  char plain;
  char shifted;
  std::int16_t virtualKey;
};

constexpr Key kKeys[] = {
    {'1', '!', '1'},   {'2', '@', '2'},  {'3', '#', '3'},  {'4', '$', '4'},  {'5', '%', '5'},
    {'6', '^', '6'},   {'7', '&', '7'},  {'8', '*', '8'},  {'9', '(', '9'},  {'0', ')', '0'},
    {';', ':', 0xBA},  {'=', '+', 0xBB}, {',', '<', 0xBC}, {'-', '_', 0xBD}, {'.', '>', 0xBE},
    {'/', '?', 0xBF},  {'`', '~', 0xC0}, {'[', '{', 0xDB}, {']', '}', 0xDD}, {'\'', '"', 0xDE},
    {'\\', '|', 0xDC},
};

std::string Hex(std::uint8_t value) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  return {kDigits[value >> 4], kDigits[value & 15]};
}

}  // namespace

std::vector<std::string> FakeDesktop::Logged(const std::string& start) const {
  std::vector<std::string> lines;
  std::copy_if(log.begin(), log.end(), std::back_inserter(lines),
               [&](const std::string& line) { return line.rfind(start, 0) == 0; });
  return lines;
}

bool FakeDesktop::ShellOpen(WindowHandle, const std::string& path, platform::ShowCommand) {
  log.push_back("open " + path);
  return opens;
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
  for (const Key& key : kKeys) {
    if (unit == static_cast<char16_t>(key.plain)) return key.virtualKey;
    if (unit == static_cast<char16_t>(key.shifted))
      return static_cast<std::int16_t>(key.virtualKey | kShift);
  }
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
  const auto failure = failures.find(command);
  return failure == failures.end() ? 0 : failure->second;
}

void FakeRegistry::PutString(platform::RegistryRoot root, const std::string& keyPath,
                             const std::string& valueName, const std::string& text) {
  Put(root, keyPath, valueName, {platform::RegistryValue::kString, text + '\0'});
}

void FakeRegistry::Put(platform::RegistryRoot root, const std::string& keyPath,
                       const std::string& valueName, platform::RegistryValue value) {
  values_[{root, keyPath + '\0' + valueName}] = std::move(value);
}

std::optional<platform::RegistryValue> FakeRegistry::Query(platform::RegistryRoot root,
                                                           const std::string& keyPath,
                                                           const std::string& valueName) {
  const auto found = values_.find({root, keyPath + '\0' + valueName});
  return found == values_.end() ? std::nullopt : std::optional(found->second);
}
