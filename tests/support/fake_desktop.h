#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/desktop.h"
#include "platform/registry.h"

/// A desktop with the letters, digits and brackets of a United States keyboard that writes down all
/// it is asked to do, one line a call: "open PATH", "front TITLE", "activate TITLE", "down VK" and
/// "up VK" (with " extended"), "media COMMAND".
class FakeDesktop : public platform::Desktop {
 public:
  /// Everything done so far, in order.
  std::vector<std::string> log;
  /// Titles of the windows that are there.
  std::set<std::string> windows;
  /// Called before each look for a window, with its title: lets windows come and go.
  std::function<void(const std::string& title)> onLook = [](const std::string&) {};
  std::uint32_t versionWord = 0;  ///< Non-Unicode family with the top bit set.

  bool ShellOpen(platform::WindowHandle owner, const std::string& path,
                 platform::ShowCommand show) override;
  platform::WindowHandle WindowTitled(const std::string& title) override;
  void BringToFront(platform::WindowHandle window) override;
  bool ActivateTitled(const std::string& title) override;
  void KeyEvent(std::uint8_t virtualKey, std::uint32_t flags) override;
  std::int16_t ScanUnicodeKey(char16_t unit) override;
  std::int16_t ScanAnsiKey(char character) override {
    return ScanUnicodeKey(static_cast<unsigned char>(character));
  }
  char ToAnsi(char16_t unit) override { return unit < 256 ? static_cast<char>(unit) : '?'; }
  std::uint32_t VersionWord() override { return versionWord; }
  std::uint32_t MediaCommand(const std::string& command) override;

 private:
  std::vector<std::string> titles_;  // A window's handle is the place of its title, from 1.
};

/// A registry that holds what a test puts there.
class FakeRegistry : public platform::Registry {
 public:
  /// By root, key path and value name.
  std::map<std::tuple<platform::RegistryRoot, std::string, std::string>, platform::RegistryValue>
      values;

  std::optional<platform::RegistryValue> Query(platform::RegistryRoot root,
                                               const std::string& keyPath,
                                               const std::string& valueName) override {
    const auto found = values.find({root, keyPath, valueName});
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
};
