#include "storage/system_helpers.h"

#include <cstddef>

#include "platform/runtime_error.h"

std::string strBurnExeName;
double dblDiskFreeMB = 0;

namespace {

constexpr char kAppPathsKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
constexpr std::size_t kHighestZeroPosition = 32767;
constexpr double kBytesInMegabyte = 1048576;
constexpr double kTwoToThe32 = 4294967296.0;

double UnsignedHalf(std::int32_t half) {
  return half < 0 ? half + kTwoToThe32 : half;
}

}  // namespace

std::string RegGetString(platform::Registry& registry, platform::RegistryRoot hKeyRoot,
                         const std::string& strKeyPath, const std::string& strValueName,
                         const std::string& strDefault) {
  const auto value = registry.Query(hKeyRoot, strKeyPath, strValueName);
  if (!value || value->type != platform::RegistryValue::kString) return strDefault;
  const std::size_t zero = value->data.find('\0');
  if (zero == std::string::npos) return value->data;
  if (zero + 1 > kHighestZeroPosition) throw RuntimeError::Overflow("RegGetString");
  return value->data.substr(0, zero);
}

std::string AppPathOf(platform::Registry& registry, const std::string& executable) {
  try {
    return RegGetString(registry, platform::RegistryRoot::kLocalMachine, kAppPathsKey + executable,
                        "", "");
  } catch (const RuntimeError&) {
    return "";  // Too long a text is no path.
  }
}

double GetDiskFreeMB(platform::FileNames& names, const std::string& strPath) {
  const std::uint64_t bytes = names.FreeBytes(names.FolderOf(strPath));
  const auto lngLow = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes));
  const auto lngHigh = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes >> 32));
  dblDiskFreeMB = LargeIntToDouble(lngLow, lngHigh) / kBytesInMegabyte;
  return dblDiskFreeMB;
}

double LargeIntToDouble(std::int32_t lngLow, std::int32_t lngHigh) {
  return UnsignedHalf(lngHigh) * kTwoToThe32 + UnsignedHalf(lngLow);
}
