#include "cdwizard/file_name.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

// UTF-16 units that a name may have, without the ending that is put behind it.
constexpr std::ptrdiff_t kLongestName = 255 - 4;

bool IsForbidden(char c) {
  constexpr std::string_view kForbidden = "<>:\"/\\|?*";
  return static_cast<unsigned char>(c) < ' ' || kForbidden.find(c) != std::string_view::npos;
}

// Bytes that follow the first one of a character count for nothing, characters of four bytes twice.
std::ptrdiff_t UnitsOf(const std::string& name) {
  return std::count_if(name.begin(), name.end(), [](char c) { return (c & 0xC0) != 0x80; }) +
         std::count_if(name.begin(), name.end(), [](char c) { return (c & 0xF8) == 0xF0; });
}

bool IsOneOf(std::string_view name, const auto& names) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// A device has its name in every folder, in whatever case and with any ending.
bool NamesDevice(const std::string& name) {
  constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
  constexpr std::string_view kPorts[] = {"1", "2", "3", "4",      "5",      "6",
                                         "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"};
  std::string first = name.substr(0, name.find('.'));
  while (first.ends_with(' ')) first.pop_back();
  for (char& c : first) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  if (first.starts_with("COM") || first.starts_with("LPT")) return IsOneOf(first.substr(3), kPorts);
  return IsOneOf(first, kDevices);
}

}  // namespace

bool IsFileName(const std::string& name) {
  return !name.empty() && std::none_of(name.begin(), name.end(), IsForbidden) &&
         UnitsOf(name) <= kLongestName && !NamesDevice(name);
}
