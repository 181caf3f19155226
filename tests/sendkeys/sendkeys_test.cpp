#include <gtest/gtest.h>

#include <string>

#include "platform/runtime_error.h"
#include "sendkeys/clsSendKeys.h"
#include "sendkeys/utf16_text.h"
#include "tests/support/fake_platform.h"

namespace {

// The key events in short: "+12" is Alt (hex 12) down, "-12" Alt up, a lone "4B" a key down and up.
std::string Keys(FakeDesktop& desktop) {
  std::string text;
  for (const std::string& event : std::exchange(desktop.log, {})) {
    const std::string key = event.substr(1);
    if (event == "-" + key && text.ends_with("+" + key))
      text.erase(text.size() - event.size(), 1);
    else
      text += (text.empty() ? "" : " ") + event;
  }
  return text;
}

constexpr std::pair<const char*, const char*> kScripts[] = {
    {"", ""},
    {"%(K)%(F)x+aA1", "+12 4B -12 +12 46 -12 58 10 41 41 31"},
    {"~(+(az)c)", "+11 +10 41 5A -10 43 -11"},
    {"~%%()", "11 12 12"},
    // Names, in any case, before characters; what is no name is typed by its first letter.
    {"{TAB}{tab}{Tab 2}{~}{BKSP}{F16}{F17}", "09 09 09 09 0D 08 7F 46"},
    {"{PRTSC}{BREAK}{SCROLLLOCK}{PGDN}{}}{{}{%}", "2A 13 91 22 DD DB 35"},
    // Repetitions.
    {"{a 3}b{a 2.5}b{a 1.5}b{a  +.2e1 }", "41 41 41 42 41 41 42 41 41 42 41 41"},
    {"{a 0}{b -7}{c 1e-999}", ""},
    // A character beyond 16 bits is two units, and no key gives either.
    {"\xC3\xA9\xF0\x9F\x98\x80", "FF FF FF"},
    {"\xFF\xC1\x81", "FF FF FF"}};

TEST(SendKeys, SendsItsKeysInOrder) {
  for (const auto& [text, keys] : kScripts) {
    FakeDesktop desktop;
    clsSendKeys(desktop, "Trimbrook").SendKeys(text, true);
    EXPECT_EQ(Keys(desktop), keys) << text;
  }
}

#define INVALID "Invalid sendkeys command"
const struct {
  const char* script;
  const char* keys;  // Held modifiers are let go, the innermost first.
  int number;
  const char* description;
} kFaults[] = {
    {"\xC3\xA9\xF0\x9F\x98\x80)", "FF FF FF", 0, INVALID ": unmatched ) at position 4"},
    {"~(%(", "+11 12 -11", 0, INVALID ": more open brackets than close brackets."},
    {"ab{}", "41 42", 0, INVALID "; opening { without content or closing } at position 3"},
    {"{ab", "", 0, INVALID "; opening { without closing } at position 1"},
    {"+(a{}b", "+10 41 -10", 0, INVALID "; opening { without closing } at position 4"},
    {"{TAB  1e}a", "", 0, INVALID "; key repetitions ' 1e' is invalid near position 10"},
    {"{a .}", "", 0, INVALID "; key repetitions '.' is invalid near position 6"},
    {"~({ 3})", "11", 9, "Key  could not be interpreted."},
    {"%({a 2147483648})", "12", 6, "Overflow"},
    {"{a 1e999}", "", 6, "Overflow"}};

TEST(SendKeys, LetsGoOfModifiersAndTellsOfAFault) {
  for (const auto& bad : kFaults) {
    SCOPED_TRACE(bad.script);
    FakeDesktop desktop;
    clsSendKeys keys(desktop, "Trimbrook");
    try {
      keys.SendKeys(bad.script);
      ADD_FAILURE() << "no fault";
    } catch (const RuntimeError& fault) {
      EXPECT_EQ(fault.number(), bad.number);
      EXPECT_EQ(fault.source(), "Trimbrook.cSendKeys");
      EXPECT_EQ(fault.description(), bad.description);
    }
    EXPECT_EQ(Keys(desktop), bad.keys);
    keys.SendKeys("a");
    EXPECT_EQ(Keys(desktop), "41") << "a held modifier was left over";
  }
}

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
  // Systems without Unicode scan the character's byte in their code page.
  EXPECT_EQ(keys.KeyCode("\xE2\x82\xAC"), 0xFF);
  desktop.versionWord = 0x80000004;
  EXPECT_EQ(keys.KeyCode("\xE2\x82\xAC"), 0xBF) << "a question mark's";
}

// The first and the last character of each length, and those beside the surrogates.
TEST(Utf16Text, IsTheSameTextAsItsUtf8) {
  constexpr std::pair<const char*, const char16_t*> kTexts[] = {
      {"\x01\x7F", u"\x01\x7F"},
      {"\xC2\x80\xDF\xBF", u"\u0080\u07FF"},
      {"\xE0\xA0\x80\xED\x9F\xBF", u"\u0800\uD7FF"},
      {"\xEE\x80\x80\xEF\xBF\xBF", u"\uE000\uFFFF"},
      {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"}};
  for (const auto& [utf8, utf16] : kTexts) {
    EXPECT_EQ(Utf16Of(utf8), utf16);
    EXPECT_EQ(Utf8Of(utf16), utf8);
  }
}

}  // namespace
