#include "platform/windows/factories.h"

#include <vector>

#include "platform/windows/text.h"
#include "platform/windows/win32.h"

namespace platform {
namespace {

bool IsText(DWORD type) {
  return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// The value's size may change between the two queries; then it counts as missing.
std::optional<RegistryValue> QueryValue(HKEY key, const std::wstring& name) {
  DWORD type = 0, bytes = 0;
  if (RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS)
    return {};
  std::vector<wchar_t> data(bytes / sizeof(wchar_t) + 1);  // Text may be half a character long.
  auto* room = reinterpret_cast<BYTE*>(data.data());
  if (RegQueryValueExW(key, name.c_str(), nullptr, &type, room, &bytes) != ERROR_SUCCESS) return {};
  if (IsText(type)) return RegistryValue{type, Utf8({data.data(), bytes / sizeof(wchar_t)})};
  return RegistryValue{type, std::string(room, room + bytes)};
}

class WindowsRegistry : public Registry {
 public:
  std::optional<RegistryValue> Query(RegistryRoot root, const std::string& keyPath,
                                     const std::string& valueName) override {
    // The predefined handles are signed 32-bit numbers, widened.
    const auto rootNumber = static_cast<INT_PTR>(static_cast<std::int32_t>(root));
    HKEY key = nullptr;
    if (RegOpenKeyExW(reinterpret_cast<HKEY>(rootNumber), Wide(keyPath).c_str(), 0, KEY_QUERY_VALUE,
                      &key) != ERROR_SUCCESS)
      return {};
    std::optional<RegistryValue> value = QueryValue(key, Wide(valueName));
    RegCloseKey(key);
    return value;
  }
};

}  // namespace

std::unique_ptr<Registry> MakeWindowsRegistry() {
  return std::make_unique<WindowsRegistry>();
}

}  // namespace platform
