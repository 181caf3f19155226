#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// The predefined roots of the registry that this program reads.
enum class RegistryRoot : std::uint32_t { kCurrentUser = 0x80000001, kLocalMachine = 0x80000002 };

/// A registry value as stored.
struct RegistryValue {
  static constexpr std::uint32_t kString = 1;  ///< The type of a plain string.

  std::uint32_t type = 0;
  /// All bytes, those of texts as UTF-8; a terminating zero is included where it is stored.
  std::string data;
};

/// Reads the registry.
class Registry {
 public:
  virtual ~Registry() = default;

  /// A value of a key; an empty `valueName` names the key's default value. None when the key or
  /// the value is missing.
  virtual std::optional<RegistryValue> Query(RegistryRoot root, const std::string& keyPath,
                                             const std::string& valueName) = 0;
};

}  // namespace platform
