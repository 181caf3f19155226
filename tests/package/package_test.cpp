#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>

#include "driver/files.h"
#include "driver/trimbrook.h"
#include "forms/win32.h"
#include "resources/version.h"

namespace driver {
namespace {

using testing::UnorderedElementsAre;

const std::string kFolder = "C:\\Größe 録画 Запись\\Trimbrook\\";
const std::string kProgram = "P:\\Trimbrook-" TRIMBROOK_VERSION "-setup.exe /S";
const std::string kInto = " /D=C:\\Größe 録画 Запись\\Trimbrook";
const std::string kSetup = kProgram + kInto;
constexpr DWORD kAborted = 2;

DWORD ExitCodeOf(const std::string& commandLine) {
  return Program(commandLine).AwaitEnd();
}

constexpr wchar_t kEntry[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Trimbrook";

/// A value of the entry under "Apps & features".
std::optional<std::string> Entry(const wchar_t* value) {
  wchar_t text[MAX_PATH];
  DWORD size = sizeof text;
  if (RegGetValueW(HKEY_CURRENT_USER, kEntry, value, RRF_RT_REG_SZ, nullptr, text, &size) !=
      ERROR_SUCCESS)
    return {};
  return forms::Utf8(text);
}

void PretendVersion(const wchar_t* version) {
  const auto bytes = static_cast<DWORD>((wcslen(version) + 1) * sizeof(wchar_t));
  RegSetKeyValueW(HKEY_CURRENT_USER, kEntry, L"DisplayVersion", REG_SZ, version, bytes);
}

bool IsInStartMenu() {
  return FileExists(forms::Utf8(_wgetenv(L"APPDATA")) +
                    R"(\Microsoft\Windows\Start Menu\Programs\Trimbrook.lnk)");
}

void Uninstall() {
  // It ends at once and leaves the work to a copy of itself, which it could not remove otherwise.
  EXPECT_EQ(ExitCodeOf('"' + kFolder + "uninstall.exe\" /S"), 0u);
  Await("end of the uninstaller", [] { return !Entry(L"DisplayName"); });
}

/// Saves, and has the reader that was handed out with the program check the file.
void SaveAndCheck(const std::string& folder, const Trimbrook& program, const std::string& target) {
  const std::string source = Recording("day.60D");
  program.Prepare(source, target);
  program.SaveAndLeave();
  const std::string compare = '"' + folder + "list_recording.exe\" --compare --blocks ";
  const std::string paths = " \"" + source + "\" \"" + target + '"';
  EXPECT_EQ(ExitCodeOf(compare + "1-3" + paths), 0u);
  EXPECT_EQ(ExitCodeOf(compare + "1-2" + paths), 1u);
}

TEST(Package, InstallsUpdatesAndGoes) {
  ASSERT_EQ(ExitCodeOf(kSetup), 0u);
  EXPECT_THAT(FilesLike(kFolder + "*"),
              UnorderedElementsAre(".", "..", "Trimbrook.exe", "list_recording.exe",
                                   "trim_recording.exe", "FILECOPY.avi", "many-recordings.html",
                                   "user-guide.html", "NOTICE.txt", "uninstall.exe"));
  EXPECT_EQ(Entry(L"DisplayName"), "Trimbrook");
  EXPECT_EQ(Entry(L"DisplayVersion"), TRIMBROOK_VERSION);
  EXPECT_EQ(Entry(L"DisplayIcon"), kFolder + "Trimbrook.exe");
  EXPECT_EQ(Entry(L"Publisher"), "Trimbrook");
  EXPECT_TRUE(IsInStartMenu());
  const std::string changed = kFolder + "NOTICE.txt";
  const std::string notice = Read(changed);
  Append(changed, "of an older version");

  // A save is not disturbed by an update, and all stays as it is.
  {
    const Trimbrook program("", kFolder + "Trimbrook.exe");
    SaveAndCheck(kFolder, program, kFolder + "saved Größe.60D");
    const std::string recording = Recording("long.60D");
    program.Prepare(recording, InWork("long.60D"));
    auto pause = program.CatchSave();
    EXPECT_EQ(ExitCodeOf(kSetup), kAborted);
    pause.reset();
    program.FinishSave();
    EXPECT_TRUE(HoldsBlocks(InWork("long.60D"), recording, 1, kLongBlocks));
    EXPECT_NE(Read(changed), notice);

    PretendVersion(L"4.10");
    EXPECT_EQ(ExitCodeOf(kSetup), kAborted) << "newer than what is to be installed";
    EXPECT_NE(Read(changed), notice);
    EXPECT_EQ(ExitCodeOf(kProgram + " /FORCE" + kInto), 0u);
    EXPECT_EQ(Entry(L"DisplayVersion"), TRIMBROOK_VERSION);
    EXPECT_EQ(program.AwaitEnd(), 0u);
    EXPECT_TRUE(Read(changed) == notice);
  }

  Uninstall();
  EXPECT_THAT(FilesLike(kFolder + "*"), UnorderedElementsAre(".", "..", "saved Größe.60D"));
  ASSERT_EQ(ExitCodeOf(kSetup), 0u);
  DeleteFileW(forms::Wide(kFolder + "saved Größe.60D").c_str());
  const Trimbrook program("", kFolder + "Trimbrook.exe");
  Uninstall();
  EXPECT_EQ(program.AwaitEnd(), 0u);
  EXPECT_FALSE(FileExists(kFolder));
  EXPECT_FALSE(IsInStartMenu());
}

// As on a stick that is write-protected.
TEST(Package, SavesFromAFolderThatCannotBeWritten) {
  if (!FileExists("Q:\\Trimbrook.exe")) GTEST_SKIP() << "no such drive: mounting takes root";
  ASSERT_THROW(Resize("Q:\\new", 1), std::exception);
  const Trimbrook program("", "Q:\\Trimbrook.exe");
  SaveAndCheck("Q:\\", program, InWork("saved.60D"));
}

}  // namespace
}  // namespace driver
