#include "cdwizard/system_helpers.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "tests/support/fake_platform.h"

using platform::RegistryRoot;

namespace {

TEST(RegGetString, TakesPlainStringsUpToTheirFirstZero) {
  using namespace std::string_literals;
  FakeRegistry registry;
  const auto read = [&](std::uint32_t type, const std::string& data) {
    registry.values[{RegistryRoot::kCurrentUser, "Key", "Name"}] = {type, data};
    return RegGetString(registry, RegistryRoot::kCurrentUser, "Key", "Name", "default");
  };
  EXPECT_EQ(read(1, "C:\\P\\a.exe\0rest"s), "C:\\P\\a.exe");
  EXPECT_EQ(read(1, "no zero"), "no zero");
  EXPECT_EQ(read(2, "%WINDIR%\0"s), "default") << "which would have to be expanded";
  EXPECT_EQ(read(1, std::string(32766, 'x') + '\0').size(), 32766u);
  EXPECT_THROW(read(1, std::string(32767, 'x') + '\0'), RuntimeError);
  EXPECT_EQ(RegGetString(registry, RegistryRoot::kLocalMachine, "Key", "Name", "other root"),
            "other root");
  // The main window asks for a program's path when it starts.
  const std::string appPath = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe";
  registry.values[{RegistryRoot::kLocalMachine, appPath, ""}] = {1, std::string(40000, 'x') + '\0'};
  EXPECT_EQ(AppPathOf(registry, "a.exe"), "");
}

TEST(GetDiskFreeMB, AsksTheVolumeOfAPath) {
  struct Volumes : MemoryDisk {
    std::string asked;
    std::uint64_t bytes = 0;
    std::uint64_t FreeBytes(const std::string& root) override {
      asked = root;
      return bytes;
    }
  } volumes;
  for (const auto& [path, root] : {std::pair{"E:\\a\\b.60D", "E:\\"},
                                   {"E:", "E:"},
                                   {"\\\\server\\share\\a.60D", "\\\\server\\share\\"},
                                   {"\\\\server\\share", "\\\\server\\share\\"}}) {
    GetDiskFreeMB(volumes, path);
    EXPECT_EQ(volumes.asked, root);
  }
  // Both halves of the number are taken as unsigned.
  volumes.bytes = 0xFFFFFFFF00000000u + 0xFFF80000u;
  EXPECT_EQ(GetDiskFreeMB(volumes, "E:\\"), 17592186044415.5);
  EXPECT_EQ(dblDiskFreeMB, 17592186044415.5);
  volumes.bytes = 0;
  EXPECT_EQ(GetDiskFreeMB(volumes, "E:\\"), 0);
}

}  // namespace
