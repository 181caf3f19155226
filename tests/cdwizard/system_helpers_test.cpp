#include "cdwizard/system_helpers.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "tests/support/fake_platform.h"

using platform::RegistryRoot;

namespace {

TEST(RegGetString, TakesPlainStringsUpToTheirFirstZero) {
  FakeRegistry registry;
  const auto read = [&](const std::string& name) {
    return RegGetString(registry, RegistryRoot::kCurrentUser, "Key", name, "default");
  };
  const auto put = [&](const std::string& name, std::uint32_t type, const std::string& data) {
    registry.values[{RegistryRoot::kCurrentUser, "Key", name}] = {type, data};
  };
  using namespace std::string_literals;
  put("", 1, "C:\\P\\a.exe\0rest"s);
  put("bare", 1, "no zero");
  put("none", 1, "");
  put("expandable", 2, "%WINDIR%\0"s);
  put("long", 1, std::string(32766, 'x') + '\0');
  put("too long", 1, std::string(32767, 'x') + '\0');
  EXPECT_EQ(read(""), "C:\\P\\a.exe");
  EXPECT_EQ(read("bare"), "no zero");
  EXPECT_EQ(read("none"), "");
  EXPECT_EQ(read("expandable"), "default");
  EXPECT_EQ(read("missing"), "default");
  EXPECT_EQ(read("long").size(), 32766u);
  EXPECT_THROW(read("too long"), RuntimeError);
  // The main window asks for a program's path when it starts.
  const std::string appPath = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe";
  registry.values[{RegistryRoot::kLocalMachine, appPath, ""}] = {1, std::string(40000, 'x') + '\0'};
  EXPECT_EQ(AppPathOf(registry, "a.exe"), "");
  EXPECT_EQ(RegGetString(registry, RegistryRoot::kLocalMachine, "Key", "", "other root"),
            "other root");
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
