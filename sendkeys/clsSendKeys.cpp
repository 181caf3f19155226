#include "sendkeys/clsSendKeys.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string_view>

#include "sendkeys/utf16_text.h"

namespace {

constexpr std::uint32_t kExtendedKey = 1;
constexpr std::uint32_t kKeyUp = 2;
constexpr std::uint32_t kOlderFamily = 0x80000000;
constexpr int kScriptFault = 0;

struct NamedKey {
  std::u16string_view name;
  std::int32_t code;
};

constexpr NamedKey kNamedKeys[] = {
    {u"BACKSPACE", 8}, {u"BS", 8},     {u"BKSP", 8},         {u"BREAK", 19}, {u"CAPSLOCK", 20},
    {u"DELETE", 46},   {u"DEL", 46},   {u"DOWN", 40},        {u"END", 35},   {u"ENTER", 13},
    {u"~", 13},        {u"ESC", 27},   {u"HELP", 47},        {u"HOME", 36},  {u"INS", 45},
    {u"INSERT", 45},   {u"LEFT", 37},  {u"NUMLOCK", 144},    {u"PGDN", 34},  {u"PGUP", 33},
    {u"PRTSC", 42},    {u"RIGHT", 39}, {u"SCROLLLOCK", 145}, {u"TAB", 9},    {u"UP", 38},
    {u"F1", 112},      {u"F2", 113},   {u"F3", 114},         {u"F4", 115},   {u"F5", 116},
    {u"F6", 117},      {u"F7", 118},   {u"F8", 119},         {u"F9", 120},   {u"F10", 121},
    {u"F11", 122},     {u"F12", 123},  {u"F13", 124},        {u"F14", 125},  {u"F15", 126},
    {u"F16", 127},
};

char16_t UpperAscii(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

bool IsSameName(std::u16string_view name, const std::u16string& key) {
  return std::equal(name.begin(), name.end(), key.begin(), key.end(),
                    [](char16_t a, char16_t b) { return a == UpperAscii(b); });
}

// Code of a key that has a name; 0 when there is none of this name.
std::int32_t NamedKeyCode(const std::u16string& key) {
  for (const NamedKey& row : kNamedKeys)
    if (IsSameName(row.name, key)) return row.code;
  return 0;
}

// Virtual key of a modifier character; 0 for any other.
std::int32_t ModifierKey(char16_t character) {
  switch (character) {
    case u'+':
      return 16;
    case u'~':
      return 17;
    case u'%':
      return 18;
    default:
      return 0;
  }
}

// Moves `next` behind a run of digits and answers how many there were.
std::size_t SkipDigits(const std::string& text, std::size_t& next) {
  const std::size_t end = std::min(text.find_first_not_of("0123456789", next), text.size());
  const std::size_t count = end - next;
  next = end;
  return count;
}

void SkipSign(const std::string& text, std::size_t& next) {
  if (next < text.size() && (text[next] == '+' || text[next] == '-')) ++next;
}

// Whether the text without outer blanks is a decimal number: sign, point and exponent optional.
bool IsDecimalNumber(const std::string& text) {
  std::size_t next = 0;
  SkipSign(text, next);
  std::size_t digits = SkipDigits(text, next);
  if (next < text.size() && text[next] == '.') digits += SkipDigits(text, ++next);
  if (digits == 0) return false;
  if (next == text.size()) return true;
  if (text[next] != 'e' && text[next] != 'E') return false;
  SkipSign(text, ++next);
  return SkipDigits(text, next) > 0 && next == text.size();
}

// The number that a repetition text gives; none when it is not numeric.
std::optional<double> NumberOf(const std::u16string& repetitions) {
  const std::string text = Utf8Of(repetitions);
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return std::nullopt;
  const std::string number = text.substr(first, text.find_last_not_of(' ') - first + 1);
  if (!IsDecimalNumber(number)) return std::nullopt;
  return std::strtod(number.c_str(), nullptr);
}

std::string At(std::size_t position) {
  return " at position " + std::to_string(position);
}

// The character at a position, counted from 1; empty outside of the text.
std::u16string NextChar(const std::u16string& text, std::size_t position) {
  return position <= text.size() ? text.substr(position - 1, 1) : std::u16string();
}

}  // namespace

clsSendKeys::clsSendKeys(platform::Desktop& desktop, const std::string& programName)
    : desktop_(desktop), source_(programName + ".cSendKeys") {}

void clsSendKeys::SendKeys(const std::string& sKeys, bool) {
  const std::u16string script = Utf16Of(sKeys);
  try {
    std::size_t position = 1;
    while (position <= script.size()) position = SendItem(script, position);
    if (!heldModifiers_.empty())
      throw ScriptFault("Invalid sendkeys command: more open brackets than close brackets.");
  } catch (const RuntimeError&) {
    while (!heldModifiers_.empty()) LetGoOfTop();
    throw;
  }
}

void clsSendKeys::KeyPress(const std::string& sKey, double lCount) {
  Press(Utf16Of(sKey), lCount);
}

void clsSendKeys::KeyDown(std::int32_t vKey) {
  desktop_.KeyEvent(static_cast<std::uint8_t>(vKey), kExtendedKey);
}

void clsSendKeys::KeyUp(std::int32_t vKey) {
  desktop_.KeyEvent(static_cast<std::uint8_t>(vKey), kExtendedKey | kKeyUp);
}

std::int32_t clsSendKeys::KeyCode(const std::string& sChar) {
  return CodeOfFirst(Utf16Of(sChar));
}

// Sends what stands at a position of the script and answers the position behind it.
std::size_t clsSendKeys::SendItem(const std::u16string& script, std::size_t position) {
  const std::u16string character = NextChar(script, position);
  if (ModifierKey(character[0]) != 0) return SendModifier(script, position);
  if (character == u")") return CloseGroup(position);
  if (character == u"{") return SendBraced(script, position);
  Press(character, 1);
  return position + 1;
}

std::size_t clsSendKeys::SendModifier(const std::u16string& script, std::size_t position) {
  const std::int32_t key = ModifierKey(script[position - 1]);
  KeyDown(key);
  if (NextChar(script, position + 1) == u"(") {
    heldModifiers_.push_back(key);
    return position + 2;
  }
  KeyUp(key);
  return position + 1;
}

std::size_t clsSendKeys::CloseGroup(std::size_t position) {
  if (heldModifiers_.empty())
    throw ScriptFault("Invalid sendkeys command: unmatched )" + At(position));
  LetGoOfTop();
  return position + 1;
}

std::size_t clsSendKeys::SendBraced(const std::u16string& script, std::size_t position) {
  if (position + 2 > script.size())
    throw ScriptFault("Invalid sendkeys command; opening { without content or closing }" +
                      At(position));
  // From the second character behind the brace on, so that "{}}" names the key of "}".
  const std::size_t closing = script.find(u'}', position + 1);
  if (closing == std::u16string::npos)
    throw ScriptFault("Invalid sendkeys command; opening { without closing }" + At(position));
  const std::size_t positionBehind = closing + 2;
  SendNamed(script.substr(position, closing - position), positionBehind);
  return positionBehind;
}

// Sends the key, and how often, that stands between two braces.
void clsSendKeys::SendNamed(const std::u16string& content, std::size_t positionBehind) {
  const std::size_t blank = content.find(u' ');
  if (blank == std::u16string::npos) return Press(content, 1);
  const std::u16string repetitions = content.substr(blank + 1);
  const auto count = NumberOf(repetitions);
  if (!count)
    throw ScriptFault("Invalid sendkeys command; key repetitions '" + Utf8Of(repetitions) +
                      "' is invalid near position " + std::to_string(positionBehind));
  Press(content.substr(0, blank), *count);
}

void clsSendKeys::Press(const std::u16string& key, double count) {
  std::int32_t code = NamedKeyCode(key);
  if (code == 0) code = CodeOfFirst(key);
  if (code == 0)
    throw RuntimeError(RuntimeError::kSubscriptOutOfRange, source_,
                       "Key " + Utf8Of(key) + " could not be interpreted.");
  // The default rounding of floating point takes halves to the even neighbour.
  const double rounded = std::nearbyint(count);
  if (rounded < std::numeric_limits<std::int32_t>::min() ||
      rounded > std::numeric_limits<std::int32_t>::max())
    throw RuntimeError::Overflow(source_);
  const auto repetitions = static_cast<std::int32_t>(rounded);
  for (std::int32_t i = 0; i < repetitions; ++i) {
    KeyDown(code);
    KeyUp(code);
  }
}

// The scan's high byte, the shift state, is dropped: an upper-case letter is typed unshifted.
std::int32_t clsSendKeys::CodeOfFirst(const std::u16string& text) {
  if (text.empty()) return 0;
  const bool isOlderFamily = (desktop_.VersionWord() & kOlderFamily) != 0;
  const std::int16_t scan = isOlderFamily ? desktop_.ScanAnsiKey(desktop_.ToAnsi(text[0]))
                                          : desktop_.ScanUnicodeKey(text[0]);
  return scan & 0xFF;
}

void clsSendKeys::LetGoOfTop() {
  KeyUp(heldModifiers_.back());
  heldModifiers_.pop_back();
}

RuntimeError clsSendKeys::ScriptFault(const std::string& message) const {
  return {kScriptFault, source_, message};
}
