#pragma once

#include "platform/registry.h"

namespace platform {

/// The registry of Windows.
class WindowsRegistry : public Registry {
 public:
  std::optional<RegistryValue> Query(RegistryRoot root, const std::string& keyPath,
                                     const std::string& valueName) override;
};

}  // namespace platform
