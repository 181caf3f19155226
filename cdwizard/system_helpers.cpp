#include "cdwizard/system_helpers.h"

#include <cstddef>

#include "platform/runtime_error.h"

std::string strBurnExeName;
double dblDiskFreeMB = 0;

namespace {

constexpr char kAppPathsKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
constexpr std::size_t kHighestZeroPosition = 32767;
constexpr double kBytesInMegabyte = 1048576;
constexpr double kTwoToThe32 = 4294967296.0;

// A share has no drive letter: its root is "\\server\share\".
std::string ShareRoot(const std::string& path) {
  const std::size_t server = path.find('\\', 2);
  if (server == std::string::npos) return path;
  const std::size_t end = path.find('\\', server + 1);
  return end == std::string::npos ? path + '\\' : path.substr(0, end + 1);
}

std::string VolumeRoot(const std::string& path) {
  return path.rfind("\\\\", 0) == 0 ? ShareRoot(path) : path.substr(0, 3);
}

double UnsignedHalf(std::int32_t half) {
  return half < 0 ? half + kTwoToThe32 : half;
}

}  // namespace

std::string RegGetString(platform::Registry& registry, platform::RegistryRoot root,
                         const std::string& keyPath, const std::string& valueName,
                         const std::string& defaultText) {
  const auto value = registry.Query(root, keyPath, valueName);
  if (!value || value->type != platform::RegistryValue::kString) return defaultText;
  const std::size_t zero = value->data.find('\0');
  if (zero == std::string::npos) return value->data;
  if (zero + 1 > kHighestZeroPosition) throw RuntimeError::Overflow("RegGetString");
  return value->data.substr(0, zero);
}

std::string AppPathOf(platform::Registry& registry, const std::string& executable) {
  return RegGetString(registry, platform::RegistryRoot::kLocalMachine, kAppPathsKey + executable,
                      "", "");
}

double GetDiskFreeMB(platform::FileNames& names, const std::string& path) {
  const std::uint64_t bytes = names.FreeBytes(VolumeRoot(path));
  const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes));
  const auto high = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes >> 32));
  dblDiskFreeMB = LargeIntToDouble(low, high) / kBytesInMegabyte;
  return dblDiskFreeMB;
}

std::uint64_t LargestFileOn(platform::FileNames& names, const std::string& path) {
  return names.LargestFile(VolumeRoot(path));
}

double LargeIntToDouble(std::int32_t low, std::int32_t high) {
  return UnsignedHalf(high) * kTwoToThe32 + UnsignedHalf(low);
}
