#include "platform/windows/text.h"

#include "platform/windows/win32.h"

namespace platform {

std::wstring Wide(std::string_view text) {
  const int bytes = static_cast<int>(text.size());
  const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), units);
  return wide;
}

std::string Utf8(std::wstring_view text) {
  const int units = static_cast<int>(text.size());
  const int bytes =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), units, narrow.data(), bytes, nullptr, nullptr);
  return narrow;
}

}  // namespace platform
