// The seams as Windows fulfils them. Wants the American locale, links on drive E that lead to files
// on drive D, an empty drive T, and another volume as drive F. This program has no manifest: paths
// beyond the code page, and long ones, must not need one.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/windows/paths.h"
#include "platform/windows/text.h"
#include "platform/windows/windows_platform.h"
#include "tests/platform/disk_contract.h"

namespace platform {
namespace {

// Greek and Japanese: no single code page has both.
std::string TemporaryFolder() {
  return Utf8((std::filesystem::temp_directory_path() / L"κάμερα 録画").wstring());
}

/// A folder on a disk of Windows; what leads to it is made when it is missing.
struct Place {
  explicit Place(std::string in) : folder(std::move(in)) {
    for (std::size_t end = folder.find('\\'); end != std::string::npos;
         end = folder.find('\\', end + 1))
      drives->MakeFolder(folder.substr(0, end));
    drives->MakeFolder(folder);
  }
  ~Place() {
    drives->RemoveFilesIn(folder);
    drives->RemoveFolder(folder + "\\sub");
  }

  const std::unique_ptr<Files> files = MakeWindowsFiles();
  const std::unique_ptr<FileNames> names = MakeWindowsFileNames();
  const std::unique_ptr<Drives> drives = MakeWindowsDrives();
  std::string folder;
};

auto WorldIn(const std::string& folder) {
  return [folder] {
    const auto place = std::make_shared<Place>(folder);
    // Under Wine the other drives are folders of one volume.
    const bool hasOther = place->drives->HasFolder("F:\\");
    const auto aged = [place](const std::string& path, long long seconds) {
      return Aged(WidePath(path), seconds);
    };
    const auto protect = [](const std::string& path, bool on) { Protect(WidePath(path), on); };
    return DiskWorld{*place->files, *place->names,          place->drives.get(),
                     folder,        hasOther ? "F:\\" : "", aged,
                     protect};
  };
}

class PlatformTest : public FolderContract {
 protected:
  WindowsPlatform windows;
  Desktop& desktop = windows.bundle().desktop;
  DateText& dates = windows.bundle().dates;
};

INSTANTIATE_TEST_SUITE_P(Windows, PlatformTest, testing::Values(WorldIn(TemporaryFolder())));

TEST_P(PlatformTest, TellsDevicesAndHiddenFilesFromNormalOnes) {
  const FileHandle device = files.Open("NUL", OpenMode::kReadExisting);
  EXPECT_EQ(files.Identity(device), std::nullopt);
  files.Close(device);
  EXPECT_EQ(names.FreeBytes("Q:\\"), 0u) << "a drive that is not there";
  const std::wstring path = Wide(Make(Path("marked")));
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(names.LookAt(Path("marked")).hindrance->kind, Failure::Kind::kUnseen);
  EXPECT_FALSE(names.LookAt(Path("*")).isTaken);
  const auto [file, kept] = files.MakeTemporary(world.folder, "WAV");
  EXPECT_TRUE(files.Keep(file, kept) && files.Close(file));
  EXPECT_EQ(GetFileAttributesW(Wide(kept).c_str()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_P(PlatformTest, ReadsTextsOfTheRegistryWhole) {
  constexpr wchar_t kKey[] = L"Software\\κάμερα 録画";
  constexpr wchar_t kText[] = L"C:\\κάμερα\0録画";
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"名", REG_SZ, kText, sizeof kText), 0);
  const auto read = [&](const char* name) {
    return windows.bundle().registry.Query(RegistryRoot::kCurrentUser, Utf8(kKey), name);
  };
  EXPECT_EQ(read("名").value_or(RegistryValue()).data,
            Utf8({kText, sizeof kText / sizeof(wchar_t)}));
  EXPECT_FALSE(read("other"));
  RegDeleteKeyW(HKEY_CURRENT_USER, kKey);
}

TEST_P(PlatformTest, LoadsNoLibraryBesideTheProgram) {
  const std::string beside = windows.bundle().programFolder + "\\Trimbrook.test.dll";
  ASSERT_TRUE(CopyFileW(L"C:\\windows\\system32\\winmm.dll", Wide(beside).c_str(), FALSE));
  KeepToLibrariesOfTheSystem();
  EXPECT_EQ(LoadLibraryW(L"Trimbrook.test.dll"), nullptr);
  names.Remove(beside);
  EXPECT_NE(desktop.MediaCommand("open nothing"), 0u);
  wchar_t winmm[MAX_PATH] = {};
  GetModuleFileNameW(GetModuleHandleW(L"winmm.dll"), winmm, MAX_PATH);
  EXPECT_EQ(_wcsicmp(winmm, L"C:\\windows\\system32\\winmm.dll"), 0) << Utf8(winmm);
}

TEST_P(PlatformTest, ClearsFoldersWithReadOnlyFiles) {
  drives.MakeFolder(Path("sub"));
  for (const char* name : {"top.txt", "sub\\below"})
    SetFileAttributesW(Wide(Make(Path(name))).c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_TRUE(drives.RemoveFilesIn(world.folder));
  EXPECT_EQ(drives.FilesBelow(world.folder), std::vector<std::string>{Path("sub\\below")});
  EXPECT_TRUE(drives.RemoveFolder(Path("sub")));
}

TEST_P(PlatformTest, NeverDeletesWhatALinkLeadsTo) {
  ASSERT_TRUE(drives.HasFile("E:\\first") && drives.HasFile("E:\\Links\\second"));
  EXPECT_TRUE(drives.RemoveFilesIn("E:\\"));
  EXPECT_TRUE(drives.RemoveFilesIn("E:\\Links"));
  drives.RemoveFolder("E:\\Links");
  EXPECT_FALSE(drives.HasFile("E:\\first") || drives.HasFile("E:\\Links\\second"));
  EXPECT_TRUE(drives.HasFile("D:\\first") && drives.HasFile("D:\\second"));
}

TEST_P(PlatformTest, WritesDatesAsTheUserDoesAndReadsThemBack) {
  const struct {
    Date date;
    const char* text;
  } cases[] = {
      {21916.0, "1/1/1960 12:00:00 AM"},
      {37652.0 + 54245.0 / 86400, "1/31/2003 3:04:05 PM"},
      {0.25, "12/30/1899 6:00:00 AM"},
      // Before day 0, where the system's own scale runs the other way within each day.
      {-0.75, "12/29/1899 6:00:00 AM"},
      {-365.5, "12/29/1898 12:00:00 PM"},
  };
  for (const auto& [date, text] : cases) {
    EXPECT_EQ(dates.Format(date), text);
    EXPECT_NEAR(dates.Parse(text).value_or(1), date, 0.1 / 86400) << text;
  }
  for (const double none : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(dates.Format(none), "");
  EXPECT_EQ(dates.Parse("yesterday"), std::nullopt);
}

TEST_P(PlatformTest, TellsWindowsApartByEveryCharacterOfTheirTitles) {
  const auto open = [](const char* title) {
    return CreateWindowExA(0, "STATIC", title, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                           nullptr);
  };
  const std::string title = "Drag   Test";
  for (const char* similar : {"DRAG   TEST", "Drag  Test", "Drag   Test "}) open(similar);
  EXPECT_EQ(desktop.WindowTitled(title), WindowHandle::kNone);
  EXPECT_FALSE(desktop.ActivateTitled(title));
  const HWND exact = open(title.c_str());
  open("drag   test");
  EXPECT_EQ(desktop.WindowTitled(title), WindowHandle(reinterpret_cast<UINT_PTR>(exact)));
}

const auto kWorlds = testing::Values(
    WorldIn(TemporaryFolder()), WorldIn("T:\\"),
    // As long as Wine tells where what lies in it lies.
    WorldIn("T:\\" + std::string(120, 'l') + "\\" + std::string(120, 'o') + "\\long"));
INSTANTIATE_TEST_SUITE_P(Windows, DiskContract, kWorlds);
INSTANTIATE_TEST_SUITE_P(Windows, FolderContract, kWorlds);

}  // namespace
}  // namespace platform
