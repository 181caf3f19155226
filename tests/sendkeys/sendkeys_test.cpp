#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/runtime_error.h"
#include "sendkeys/clsSendKeys.h"
#include "tests/support/fake_desktop.h"

namespace {

// The key events in short: "+12" is Alt (hex 12) down, "-12" Alt up, a lone "4B" a key down and up.
std::string Keys(const FakeDesktop& desktop) {
  std::string text;
  for (std::size_t i = 0; i < desktop.log.size(); ++i) {
    const std::string& line = desktop.log[i];
    const bool down = line.rfind("down ", 0) == 0;
    EXPECT_EQ(line.substr(line.size() - 9), " extended");
    const std::string key = down ? line.substr(5, 2) : line.substr(3, 2);
    const bool pressed =
        down && i + 1 < desktop.log.size() && desktop.log[i + 1] == "up " + key + " extended";
    text += (text.empty() ? "" : " ") + std::string(pressed ? "" : down ? "+" : "-") + key;
    if (pressed) ++i;
  }
  return text;
}

struct Script {
  const char* text;
  const char* keys;
};

class GoodScript : public testing::TestWithParam<Script> {};

TEST_P(GoodScript, SendsItsKeysInOrder) {
  FakeDesktop desktop;
  clsSendKeys(desktop, "Trimbrook").SendKeys(GetParam().text, true);
  EXPECT_EQ(Keys(desktop), GetParam().keys);
}

INSTANTIATE_TEST_SUITE_P(
    All, GoodScript,
    testing::Values(
        Script{"", ""}, Script{"%(K)", "+12 4B -12"}, Script{"%(F)x", "+12 46 -12 58"},
        Script{"+a", "10 41"}, Script{"A1", "41 31"}, Script{"~", "11"},
        Script{"~(+(ab)c)", "+11 +10 41 42 -10 43 -11"}, Script{"%", "12"}, Script{"%()", "12"},
        // Names, in any case, before characters; what is no name is typed by its first letter.
        Script{"{TAB}{tab}{Tab 2}", "09 09 09 09"}, Script{"{~}{BKSP}{F16}", "0D 08 7F"},
        Script{"{F17}", "46"}, Script{"{PRTSC}{BREAK}{SCROLLLOCK}{PGDN}", "2A 13 91 22"},
        Script{"{}}{{}{%}", "DD DB 35"},
        // Repetitions.
        Script{"{a 3}b", "41 41 41 42"}, Script{"{a 2.5}", "41 41"}, Script{"{a 1.5}", "41 41"},
        Script{"{a  +.2e1 }", "41 41"}, Script{"{a 0}{b -7}{c 1e-999}", ""},
        // A character beyond 16 bits is two units, and no key gives either.
        Script{"\xC3\xA9", "FF"}, Script{"\xF0\x9F\x98\x80", "FF FF"}, Script{"\xFF", "FF"},
        Script{"\xC1\x81", "FF FF"}));

struct Fault {
  const char* script;
  const char* keys;  // Held modifiers are let go, the innermost first.
  int number;
  const char* description;
};

class BadScript : public testing::TestWithParam<Fault> {};

TEST_P(BadScript, LetsGoOfModifiersAndTells) {
  FakeDesktop desktop;
  clsSendKeys keys(desktop, "Trimbrook");
  try {
    keys.SendKeys(GetParam().script);
    FAIL() << "no fault";
  } catch (const RuntimeError& fault) {
    EXPECT_EQ(fault.number(), GetParam().number);
    EXPECT_EQ(fault.source(), "Trimbrook.cSendKeys");
    EXPECT_EQ(fault.description(), GetParam().description);
  }
  EXPECT_EQ(Keys(desktop), GetParam().keys);
  desktop.log.clear();
  keys.SendKeys("a");
  EXPECT_EQ(Keys(desktop), "41") << "a held modifier was left over";
}

#define INVALID "Invalid sendkeys command"
INSTANTIATE_TEST_SUITE_P(
    All, BadScript,
    testing::Values(
        Fault{"a)", "41", 0, INVALID ": unmatched ) at position 2"},
        Fault{"\xC3\xA9\xF0\x9F\x98\x80)", "FF FF FF", 0, INVALID ": unmatched ) at position 4"},
        Fault{"%(F", "+12 46 -12", 0, INVALID ": more open brackets than close brackets."},
        Fault{"~(%(", "+11 12 -11", 0, INVALID ": more open brackets than close brackets."},
        Fault{"{", "", 0, INVALID "; opening { without content or closing } at position 1"},
        Fault{"ab{}", "41 42", 0, INVALID "; opening { without content or closing } at position 3"},
        Fault{"{ab", "", 0, INVALID "; opening { without closing } at position 1"},
        Fault{"+(a{}b", "+10 41 -10", 0, INVALID "; opening { without closing } at position 4"},
        Fault{"{TAB x}", "", 0, INVALID "; key repetitions 'x' is invalid near position 8"},
        Fault{"{TAB }", "", 0, INVALID "; key repetitions '' is invalid near position 7"},
        Fault{"{TAB  1e}a", "", 0, INVALID "; key repetitions ' 1e' is invalid near position 10"},
        Fault{"{a 1 2}", "", 0, INVALID "; key repetitions '1 2' is invalid near position 8"},
        Fault{"{a .}", "", 0, INVALID "; key repetitions '.' is invalid near position 6"},
        Fault{"~({ 3})", "11", 9, "Key  could not be interpreted."},
        Fault{"%({a 2147483648})", "12", 6, "Overflow"}, Fault{"{a 1e999}", "", 6, "Overflow"}));

// The shift state of the scan is dropped; a name wins over its first letter.
TEST(KeyCodes, ComeFromTheSystem) {
  FakeDesktop desktop;
  clsSendKeys keys(desktop, "Trimbrook");
  EXPECT_EQ(keys.KeyCode("Abc"), keys.KeyCode("a"));
  EXPECT_EQ(keys.KeyCode("%"), '5');
  EXPECT_EQ(keys.KeyCode(""), 0);
  keys.KeyDown(0x112);
  keys.KeyUp(0x112);
  keys.KeyPress("up", 2);
  EXPECT_EQ(Keys(desktop), "12 26 26");
}

// Systems without Unicode scan the character's byte in their code page.
TEST(KeyCodes, UseTheCodePageInTheOlderFamily) {
  struct OlderDesktop : FakeDesktop {
    std::int16_t ScanAnsiKey(char character) override { return character == '?' ? 0x1BF : -1; }
  } desktop;
  clsSendKeys keys(desktop, "Trimbrook");
  EXPECT_EQ(keys.KeyCode("\xE2\x82\xAC"), 0xFF);
  desktop.versionWord = 0x80000004;
  EXPECT_EQ(keys.KeyCode("\xE2\x82\xAC"), 0xBF);
}

}  // namespace
