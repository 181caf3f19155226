// The seams as Windows fulfils them. Wants the American locale, and links on drive E that lead to
// files on drive D.
#include <gtest/gtest.h>

#include <string>

#include "platform/windows/text.h"
#include "platform/windows/win32.h"
#include "platform/windows/windows_platform.h"

namespace platform {
namespace {

class PlatformTest : public testing::Test {
 protected:
  void SetUp() override {
    char temporary[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, temporary);
    // Greek and Japanese: no single code page has both.
    folder = std::string(temporary) + "κάμερα 録画";
    drives.RemoveFolder(folder);
    ASSERT_TRUE(drives.MakeFolder(folder));
  }
  void TearDown() override { EXPECT_TRUE(drives.RemoveFolder(folder)); }

  std::string Path(const std::string& name) const { return folder + "\\" + name; }

  std::string Make(const std::string& path, std::uint32_t bytes = 3) {
    const std::string content(bytes, 'x');
    const FileHandle file = files.Open(path, OpenMode::kWriteNew);
    std::uint32_t written = 0;
    EXPECT_TRUE(files.Write(file, content.data(), bytes, written));
    EXPECT_EQ(written, bytes);
    EXPECT_TRUE(files.Close(file));
    return path;
  }

  std::optional<FileIdentity> IdentityOf(const std::string& path) {
    const FileHandle file = files.Open(path, OpenMode::kReadExisting);
    const std::optional<FileIdentity> identity = files.Identity(file);
    files.Close(file);
    return identity;
  }

  WindowsPlatform windows;
  Files& files = windows.bundle().files;
  FileNames& names = windows.bundle().names;
  Drives& drives = windows.bundle().drives;
  Desktop& desktop = windows.bundle().desktop;
  DateText& dates = windows.bundle().dates;
  std::string folder;
};

TEST_F(PlatformTest, ReadsBackWhatWasWrittenBeyondFourGigabytes) {
  constexpr std::int64_t kFar = (std::int64_t{5} << 30) + 1;
  const std::string path = Make(Path("far"));
  std::uint32_t count = 0;
  FileHandle file = files.Open(path, OpenMode::kWriteExisting);
  EXPECT_TRUE(files.Seek(file, kFar) && files.Write(file, "end", 3, count) && files.Flush(file));
  files.Close(file);

  char read[8] = {};
  file = files.Open(path, OpenMode::kReadExisting);
  EXPECT_EQ(files.Size(file), kFar + 3);
  EXPECT_TRUE(files.Seek(file, kFar) && files.Read(file, read, sizeof read, count));
  EXPECT_EQ(std::string(read, count), "end");
  files.Close(file);
}

TEST_F(PlatformTest, KnowsAFileUnderAnyOfItsNames) {
  const std::string path = Make(Path("one"));
  const std::string other = Make(Path("two"));
  ASSERT_TRUE(CreateHardLinkA(Path("link").c_str(), path.c_str(), nullptr));
  EXPECT_EQ(IdentityOf(path), IdentityOf(Path("ONE")));
  EXPECT_EQ(IdentityOf(path), IdentityOf(Path("link")));
  EXPECT_NE(IdentityOf(path), IdentityOf(other));
  EXPECT_EQ(IdentityOf("NUL"), std::nullopt);
}

TEST_F(PlatformTest, FindsNormalFilesOnly) {
  const std::string path = Make(Path("seen"));
  EXPECT_TRUE(names.Find(path));
  EXPECT_FALSE(names.Find(Path("*")));
  EXPECT_FALSE(names.Find(folder));
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_FALSE(names.Find(path) || names.Find(Path("missing")));
}

TEST_F(PlatformTest, MovesOntoNothingThatExists) {
  const std::string from = Make(Path("from"), 5);
  const std::string to = Make(Path("to"), 7);
  EXPECT_FALSE(names.Move(from, to));
  EXPECT_EQ(drives.FileBytes(from), 5u);
  EXPECT_EQ(drives.FileBytes(to), 7u);
  EXPECT_TRUE(names.Remove(to) && names.Move(from, to));
  EXPECT_EQ(drives.FileBytes(to), 5u);
  EXPECT_FALSE(drives.HasFile(from));
}

TEST_F(PlatformTest, ClearsFoldersWithReadOnlyFiles) {
  drives.MakeFolder(Path("sub"));
  const std::string top = Make(Path("top.txt"));
  const std::string below = Make(Path("sub\\below"));
  SetFileAttributesA(top.c_str(), FILE_ATTRIBUTE_READONLY);
  SetFileAttributesA(below.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(drives.FilesBelow(folder).size(), 2u);

  EXPECT_TRUE(drives.RemoveFilesIn(folder));
  EXPECT_EQ(drives.FilesBelow(folder), std::vector<std::string>{below});
  EXPECT_TRUE(drives.RemoveFolder(Path("sub")));
  EXPECT_FALSE(drives.HasFolder(Path("sub")) || drives.RemoveFolder(Path("sub")));
}

TEST_F(PlatformTest, NeverDeletesWhatALinkLeadsTo) {
  ASSERT_TRUE(drives.HasFile("E:\\first") && drives.HasFile("E:\\Links\\second"));
  EXPECT_TRUE(drives.RemoveFilesIn("E:\\"));
  drives.RemoveFolder("E:\\Links");
  EXPECT_FALSE(drives.HasFile("E:\\first") || drives.HasFile("E:\\Links\\second"));
  EXPECT_TRUE(drives.HasFile("D:\\first") && drives.HasFile("D:\\second"));
}

TEST_F(PlatformTest, WritesDatesAsTheUserDoesAndReadsThemBack) {
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
    // Once by what has just been written, and once without.
    EXPECT_NEAR(dates.Parse(text).value_or(1), date, 0.1 / 86400) << text;
    EXPECT_NEAR(platform::WindowsDateText().Parse(text).value_or(1), date, 0.1 / 86400) << text;
  }
}

TEST_F(PlatformTest, ReadsADateJustWrittenAsItsTextShowsIt) {
  wchar_t usual[80] = {};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, usual, 80);
  for (const wchar_t* format : {L"h:mm:ss tt", L"h:mm:ss", L"HH:mm", L"HH:mm:ss"}) {
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, format);
    for (const double hour : {0.0, 9.5125, 12.0, 23.9997}) {
      const std::string text = dates.Format(37652 + hour / 24);
      const std::optional<Date> read = platform::WindowsDateText().Parse(text);
      ASSERT_TRUE(read) << text;
      EXPECT_NEAR(dates.Parse(text).value_or(0), *read, 0.1 / 86400) << text;
    }
  }
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, usual);
}

TEST_F(PlatformTest, RefusesWhatIsNoDate) {
  EXPECT_EQ(dates.Format(1e300), "");
  EXPECT_EQ(dates.Format(-1e300), "");
  EXPECT_EQ(dates.Format(std::numeric_limits<double>::quiet_NaN()), "");
  EXPECT_EQ(dates.Parse("yesterday"), std::nullopt);
}

TEST_F(PlatformTest, TellsWindowsApartByEveryCharacterOfTheirTitles) {
  const std::string title = "Drag   Test";
  const char* const similar[] = {"DRAG   TEST", "Drag  Test", "Drag   Test "};
  for (const char* other : similar)
    CreateWindowExA(0, "STATIC", other, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(desktop.WindowTitled(title), WindowHandle::kNone);
  EXPECT_FALSE(desktop.ActivateTitled(title));
  const HWND exact = CreateWindowExA(0, "STATIC", title.c_str(), WS_POPUP, 0, 0, 1, 1, nullptr,
                                     nullptr, nullptr, nullptr);
  CreateWindowExA(0, "STATIC", "drag   test", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                  nullptr);
  EXPECT_EQ(desktop.WindowTitled(title), WindowHandle(reinterpret_cast<UINT_PTR>(exact)));
}

}  // namespace
}  // namespace platform
