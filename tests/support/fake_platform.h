#pragma once

#include <cmath>
#include <ctime>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/platform.h"
#include "tests/support/memory_disk.h"

/// A clock that stands still but for what is slept and, when a test says so, for each look at it.
class FakeClock : public platform::Clock {
 public:
  using Duration = std::chrono::steady_clock::duration;

  /// How much later each look at the clock is than the one before.
  Duration step = Duration::zero();
  /// What the next look answers; a test may set it on.
  Duration now = Duration::zero();

  Duration Now() override { return std::exchange(now, now + step); }
  void Sleep(std::chrono::milliseconds time) override { now += time; }
};

/// The date of the first second of 1970.
inline constexpr platform::Date kUnixEpoch = 25569;

/// The date of a day and a time of day.
inline platform::Date DateOf(int year, int month, int day, int hour = 0, int minute = 0,
                             int second = 0) {
  std::tm parts = {second, minute, hour, day, month - 1, year - 1900, 0, 0, 0, 0, nullptr};
  return static_cast<double>(timegm(&parts)) / 86400 + kUnixEpoch;
}

/// Date texts of one locale, for the years 100 to 9999.
class FakeDates : public platform::DateText {
 public:
  enum class Style {
    kUs,         ///< "1/31/2003 3:04:05 PM"
    kGerman,     ///< "31.01.2003 15:04:05"
    kUnreadable  ///< "31 of 1 2003, 15h04": pieces at other places, and it reads back nothing.
  };

  explicit FakeDates(Style which = Style::kUs) : style(which) {}

  std::string Format(platform::Date date) override {
    if (!(date > DateOf(100, 1, 1) && date < DateOf(9999, 12, 31))) return "";
    const std::time_t time = std::llround((date - kUnixEpoch) * 86400);
    std::tm parts = {};
    gmtime_r(&time, &parts);
    char text[64];
    return {text, std::strftime(text, sizeof text, Pattern(), &parts)};
  }
  std::optional<platform::Date> Parse(const std::string& text) override {
    std::tm parts = {};
    if (style == Style::kUnreadable || !strptime(text.c_str(), Pattern(), &parts)) return {};
    return static_cast<double>(timegm(&parts)) / 86400 + kUnixEpoch;
  }

  Style style;

 private:
  /// What `strftime` and `strptime` call the style's text.
  const char* Pattern() const {
    constexpr const char* kPatterns[] = {"%-m/%-d/%Y %-I:%M:%S %p", "%d.%m.%Y %H:%M:%S",
                                         "%-d of %-m %Y, %-Hh%M"};
    return kPatterns[static_cast<int>(style)];
  }
};

/// A desktop with the letters, digits and brackets of a United States keyboard that writes down all
/// it is asked to do, one line a call: "open PATH", "front TITLE", "activate TITLE", "media
/// COMMAND", "+VK" and "-VK" for a key down and up (with " plain" when it is no extended one).
class FakeDesktop : public platform::Desktop {
 public:
  /// Everything done so far, in order.
  std::vector<std::string> log;
  /// Titles of the windows that are there.
  std::set<std::string> windows;
  /// Called before each look for a window, with its title: lets windows come and go.
  std::function<void(const std::string& title)> onLook = [](const std::string&) {};
  std::uint32_t versionWord = 0;  ///< Non-Unicode family with the top bit set.

  bool ShellOpen(platform::WindowHandle, const std::string& path, platform::ShowCommand) override {
    log.push_back("open " + path);
    return true;
  }
  platform::WindowHandle WindowTitled(const std::string& title) override {
    onLook(title);
    if (!windows.contains(title)) return platform::WindowHandle::kNone;
    titles_.push_back(title);
    return static_cast<platform::WindowHandle>(titles_.size());
  }
  void BringToFront(platform::WindowHandle window) override {
    log.push_back("front " + titles_.at(static_cast<std::size_t>(window) - 1));
  }
  bool ActivateTitled(const std::string& title) override {
    log.push_back("activate " + title);
    return windows.contains(title);
  }
  void KeyEvent(std::uint8_t virtualKey, std::uint32_t flags) override {
    char text[16];
    std::snprintf(text, sizeof text, "%c%02X%s", flags & 2 ? '-' : '+', virtualKey,
                  flags & 1 ? "" : " plain");
    log.push_back(text);
  }
  std::int16_t ScanUnicodeKey(char16_t unit) override {
    constexpr std::int16_t kShift = 0x100;
    // Characters other than letters, without and with Shift, and their keys.
    constexpr std::u16string_view kPlain = u"0123456789[\\]/", kShifted = u")!@#$%^&*({|}?";
    constexpr char kKeys[] = "0123456789\xDB\xDC\xDD\xBF";
    if (unit == ' ' || unit == '\r' || unit == '\t') return static_cast<std::int16_t>(unit);
    if (unit >= 'a' && unit <= 'z') return static_cast<std::int16_t>(unit - 'a' + 'A');
    if (unit >= 'A' && unit <= 'Z') return static_cast<std::int16_t>(unit | kShift);
    if (const auto at = kPlain.find(unit); at != kPlain.npos) return kKeys[at] & 0xFF;
    if (const auto at = kShifted.find(unit); at != kShifted.npos)
      return (kKeys[at] & 0xFF) | kShift;
    return -1;
  }
  std::int16_t ScanAnsiKey(char character) override {
    return ScanUnicodeKey(static_cast<unsigned char>(character));
  }
  char ToAnsi(char16_t unit) override { return unit < 256 ? static_cast<char>(unit) : '?'; }
  std::uint32_t VersionWord() override { return versionWord; }
  std::uint32_t MediaCommand(const std::string& command) override {
    log.push_back("media " + command);
    return 0;
  }

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

/// The whole outside world of a test, with the program's own file on its disk. A test may bring a
/// kind of disk of its own.
template <typename Disk>
struct PlatformWith {
  PlatformWith() { disk.Put("C:\\Trimbrook\\Trimbrook.exe", ""); }

  Disk disk;
  FakeRegistry registry;
  FakeDesktop desktop;
  FakeDates dates;
  FakeClock clock;
  platform::Platform system{
      {disk, disk, dates, clock, "C:\\Trimbrook"}, disk, registry, desktop, "Trimbrook"};
};

using FakePlatform = PlatformWith<MemoryDisk>;
