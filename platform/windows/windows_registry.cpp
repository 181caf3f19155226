#include "platform/windows/windows_registry.h"

#include "platform/windows/win32.h"

namespace platform {
namespace {

// The value's size may change between the two queries; then it counts as missing.
std::optional<RegistryValue> QueryValue(HKEY key, const char* name) {
  DWORD type = 0, bytes = 0;
  if (RegQueryValueExA(key, name, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS) return {};
  RegistryValue value;
  value.data.resize(bytes);
  if (RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(value.data.data()),
                       &bytes) != ERROR_SUCCESS)
    return {};
  value.type = type;
  value.data.resize(bytes);
  return value;
}

}  // namespace

std::optional<RegistryValue> WindowsRegistry::Query(RegistryRoot root, const std::string& keyPath,
                                                    const std::string& valueName) {
  // The predefined handles are signed 32-bit numbers, widened.
  const auto rootNumber = static_cast<INT_PTR>(static_cast<std::int32_t>(root));
  HKEY key = nullptr;
  if (RegOpenKeyExA(reinterpret_cast<HKEY>(rootNumber), keyPath.c_str(), 0, KEY_QUERY_VALUE,
                    &key) != ERROR_SUCCESS)
    return {};
  std::optional<RegistryValue> value = QueryValue(key, valueName.c_str());
  RegCloseKey(key);
  return value;
}

}  // namespace platform
