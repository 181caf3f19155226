#include "sendkeys/utf16_text.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCharacter = 0x10FFFF;

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}
bool IsSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDFFF;
}

std::uint8_t ByteAt(const std::string& text, std::size_t index) {
  return static_cast<std::uint8_t>(text[index]);
}

// Bytes of the character that a lead byte starts; 0 for a byte that starts none.
std::size_t SequenceLength(std::uint8_t lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return lead < 0xF5 ? 4 : 0;
}

// The character of `length` bytes at `index`; none when they are not a well-formed sequence.
std::optional<char32_t> CharacterAt(const std::string& text, std::size_t index,
                                    std::size_t length) {
  if (length == 0 || index + length > text.size()) return std::nullopt;
  if (length == 1) return ByteAt(text, index);
  char32_t character = ByteAt(text, index) & (0x7Fu >> length);
  for (std::size_t i = index + 1; i < index + length; ++i) {
    if ((ByteAt(text, i) & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (ByteAt(text, i) & 0x3Fu);
  }
  constexpr char32_t kLowestOfLength[] = {0, 0, 0x80, 0x800, kFirstSupplementary};
  const bool isValid = character >= kLowestOfLength[length] && character <= kLastCharacter &&
                       !IsSurrogate(character);
  return isValid ? std::optional<char32_t>(character) : std::nullopt;
}

void AppendUtf16(std::u16string& units, char32_t character) {
  if (character < kFirstSupplementary) {
    units += static_cast<char16_t>(character);
    return;
  }
  const char32_t rest = character - kFirstSupplementary;
  units += static_cast<char16_t>(0xD800 + (rest >> 10));
  units += static_cast<char16_t>(0xDC00 + (rest & 0x3FF));
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
  const auto appendRest = [&append, character](int shift) {
    for (; shift >= 0; shift -= 6) append(0x80 | (character >> shift & 0x3F));
  };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | character >> 6);
    appendRest(0);
  } else if (character < kFirstSupplementary) {
    append(0xE0 | character >> 12);
    appendRest(6);
  } else {
    append(0xF0 | character >> 18);
    appendRest(12);
  }
}

}  // namespace

std::u16string Utf16Of(const std::string& text) {
  std::u16string units;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = SequenceLength(ByteAt(text, i));
    const auto character = CharacterAt(text, i, length);
    AppendUtf16(units, character.value_or(kReplacement));
    i += character ? length : 1;
  }
  return units;
}

std::string Utf8Of(const std::u16string& units) {
  std::string text;
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t character = units[i];
    if (IsHighSurrogate(character) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
      ++i;
      character = kFirstSupplementary + ((character - 0xD800) << 10) + (units[i] - 0xDC00u);
    }
    AppendUtf8(text, IsSurrogate(character) ? kReplacement : character);
  }
  return text;
}
