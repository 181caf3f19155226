#include <new>

#include "cdwizard/cd_wizard.h"
#include "cdwizard/file_name.h"
#include "platform/runtime_error.h"
#include "storage/system_helpers.h"
#include "tests/cdwizard/wizard_world.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char kWelcome[] = "page Welcome to CD Creator Wizard!";
constexpr char kDrive[] = "page Please Select CD Recorder Drive:";
constexpr char kFileName[] = "page Please Input File Name:";
constexpr char kCopying[] = "page The File is being saved to the CD ...";
constexpr char kReselect[] = "page Please Select Capture File(s):";
constexpr char kEject[] = "page The Files have been saved to the CD!";
constexpr char kDone[] = "page CD Creator Wizard Is Done!";
constexpr char kNotReady[] = "ask Disk not ready! Do you want to try again?";
constexpr char kEjectDialog[] = "Drag-to-Disc   Eject Options";

class Wizard : public testing::Test, protected WizardWorld {
 protected:
  Wizard() {
    strBurnExeName = "DirectCD.exe";
    view.input.fileName = "Part";
  }

  void Register(const std::string& executable) {
    outside.registry
        .values[{platform::RegistryRoot::kLocalMachine,
                 "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\" + executable, ""}] = {
        platform::RegistryValue::kString, "C:\\CD\\" + executable};
  }
  /// Loads the wizard with DirectCD there, clicks the page buttons, and forgets what was logged.
  void GoTo(std::initializer_list<int> buttons) {
    Register("DirectCD.exe");
    wizard.Load();
    for (const int button : buttons) Click(button);
    Done();
  }
  std::vector<std::string> Click(int button) {
    EXPECT_TRUE(view.look.buttons.at(static_cast<std::size_t>(button)).enabled) << button;
    wizard.cmdNext_Click(button);
    return view.Taken();
  }
  /// What the desktop was asked to do since the last call.
  std::vector<std::string> Done() { return std::exchange(desktop.log, {}); }

  FakeDesktop& desktop = outside.desktop;
  CdWizard wizard{outside.system, *this, view};
};

// What is pressed while it copies means nothing.
TEST_F(Wizard, RunsThroughWithDirectCd) {
  Register("DirectCD.exe");
  disk.cdRoms = {"D:", "E:"};
  target = "C:\\Out\\My Part.60D";
  desktop.windows = {"DirectCD", "DrgToDsc", kEjectDialog};
  wizard.Load();
  EXPECT_THAT(view.drives, ElementsAre("D:", "E:"));
  EXPECT_THAT(view.Taken(), ElementsAre(kWelcome));
  EXPECT_THAT(Click(0), ElementsAre(kWelcome, kDrive));
  EXPECT_THAT(Click(1), ElementsAre(kFileName, "discard"));
  EXPECT_THAT(Done(), ElementsAre("open C:\\CD\\DirectCD.exe", "front DirectCD"));
  EXPECT_EQ(view.input.fileName, "My Part.60D");
  view.onMessages = [&] {
    EXPECT_FALSE(wizard.MayClose());
    for (int button = 0; button < kPageButtons; ++button) wizard.cmdNext_Click(button);
    wizard.cmdCancel_Click();
  };
  EXPECT_THAT(Click(2), ElementsAre(kCopying, "busy", "progress", "percent 50", "percent 100",
                                    "idle", kEject));
  EXPECT_TRUE(wizard.MayClose());
  EXPECT_EQ(disk.View("E:\\My Part.60D"), ThreeBlocks().substr(0, 2 * kBlock));
  EXPECT_THAT(Click(3), ElementsAre(kDone, "discard"));
  EXPECT_THAT(Done(), ElementsAre("media open  E:  type cdaudio alias cd1",
                                  "media set cd1 door open wait"));
  EXPECT_THAT(Click(4), ElementsAre("close"));
  for (const int none : {-1, 8}) wizard.cmdNext_Click(none);
  wizard.cmdCancel_Click();
  EXPECT_THAT(view.Taken(), ElementsAre("close"));
}

// The eject dialog comes after a while, titles that only look like it before.
TEST_F(Wizard, RunsThroughWithDragToDisc) {
  Register("DrgToDsc.exe");
  desktop.windows = {"DrgToDsc", "DirectCD"};
  GoTo({0});
  EXPECT_THAT(Click(1), ElementsAre(kFileName, "ask Do you want to format this CD?", "discard"));
  EXPECT_THAT(Done(), ElementsAre("activate DrgToDsc", "+12", "+4B", "-4B", "-12", "+12", "+46",
                                  "-46", "-12", "activate DrgToDsc", "+12", "+4F", "-4F", "-12"));
  EXPECT_EQ(Click(2).back(), kEject);
  Done();
  desktop.windows = {"Drag-to-Disc  Eject Options", "Drag-to-Disc    Eject Options"};
  int looks = 0;
  desktop.onLook = [&](const std::string&) {
    if (++looks == 5) desktop.windows.insert(kEjectDialog);
  };
  EXPECT_THAT(Click(3), ElementsAre("hourglass", "pointer", kDone, "discard"));
  EXPECT_THAT(
      Done(),
      ElementsAre("media open  E:  type cdaudio alias cd1", "media set cd1 door open wait",
                  std::string("front ") + kEjectDialog, std::string("front ") + kEjectDialog));
  EXPECT_EQ(looks, 5);
}

TEST_F(Wizard, StartsDragToDiscWhenItDoesNotRun) {
  Register("DrgToDsc.exe");
  GoTo({0});
  EXPECT_THROW(Click(1), RuntimeError) << "activated a window that there is not";
  EXPECT_THAT(Done(), ElementsAre("open C:\\CD\\DrgToDsc.exe", "activate DrgToDsc"));
  EXPECT_TRUE(view.look.showsFileName) << "the page is up and stays";
  EXPECT_EQ(view.log.back(), "discard");
  Done();
  view.input.fileName = "typed";
  EXPECT_EQ(Click(6).back(), kDrive);
  EXPECT_THAT(Click(5), ElementsAre(kWelcome));
  Click(0);
  view.answers = {false};
  Click(1);
  EXPECT_THAT(Done(), IsEmpty()) << "the disc is formatted already";
  EXPECT_EQ(view.input.fileName, "typed");
}

TEST_F(Wizard, WantsDirectCdEvenWhereThereIsDragToDisc) {
  Register("DrgToDsc.exe");
  wizard.Load();
  EXPECT_THAT(Click(0),
              ElementsAre(kWelcome, kWelcome,
                          "tell The program [DirectCD.exe] is not found! The wizard will not "
                          "continue.",
                          "close"));
}

TEST_F(Wizard, WantsOneToThreeDrives) {
  const auto load = [&](const std::vector<std::string>& drives) {
    disk.cdRoms = drives;
    wizard.Load();
    return view.Taken();
  };
  EXPECT_THAT(load({}), ElementsAre("tell as application No CDRom was detected on your computer, "
                                    "the wizard will not continue!",
                                    "close"));
  EXPECT_THAT(load({"D:"}), ElementsAre(kWelcome));
  EXPECT_THAT(load({"D:", "E:", "F:"}), ElementsAre(kWelcome));
  EXPECT_THROW(load({"D:", "E:", "F:", "G:"}), RuntimeError);
}

TEST_F(Wizard, AsksForANameThatWindowsTakes) {
  GoTo({0, 1});
  for (const char* name : {"", "cam 1?"}) {
    view.input.fileName = name;
    EXPECT_THAT(Click(2), ElementsAre("tell You must input a file name!", kFileName)) << name;
  }
  EXPECT_TRUE(view.look.focusesFileName);
}

TEST(IsFileName, TakesWhatWindowsTakes) {
  using namespace std::string_literals;
  for (const std::string& name : {"12:30"s, "a\\b"s, "a/b"s, "*"s, "a\tb"s, "nul"s, "Con .txt"s,
                                  "LPT9.x"s, "com\u00B2"s, std::string(252, 'a')})
    EXPECT_FALSE(IsFileName(name)) << name;
  std::string umlauts;
  for (int i = 0; i < 251; ++i) umlauts += "\u00E4";
  for (const std::string& name : {".20D"s, "COM"s, "null"s, "LPT10"s, "a..."s, umlauts})
    EXPECT_TRUE(IsFileName(name)) << name;
}

// The estimate is 4 MB; the free space is rounded, halves to even, and must be greater.
TEST_F(Wizard, ComparesWithTheRoomOnTheDisc) {
  const auto writeOn = [&](double freeMB) {
    disk.room["E:"] = static_cast<std::uint64_t>(freeMB * 1048576);
    GoTo({0, 1});
    view.answers = {false};
    return Click(2);
  };
  for (const double free : {4., 4.5})
    EXPECT_THAT(writeOn(free),
                ElementsAre("tell The total size of the file you selected is too big to fit on the "
                            "CD!",
                            "close"));
  for (const double free : {0., 0.5})
    EXPECT_THAT(writeOn(free),
                ElementsAre(kNotReady, "tell The wizard will not continue.", "close"));
  // A missing player file ends the wizard without a word when the user does not want to go on.
  view.input.wantsPlayer = true;
  EXPECT_THAT(
      writeOn(100),
      ElementsAre("ask The file (TessaviewCD\\Autorun.inf) can not be found! \r\nYou can only save "
                  "the selected file but not the Tessaview files. Do you want to continue?",
                  "close"));
  view.input.wantsPlayer = false;
  EXPECT_EQ(writeOn(4.5 + 1. / 1048576).back(), kEject);
}

TEST_F(Wizard, TriesAgainFromTheDrivePage) {
  disk.room["E:"] = 0;
  GoTo({0, 1});
  EXPECT_THAT(Click(2), ElementsAre(kNotReady, kReselect, kDrive));
  EXPECT_TRUE(view.look.showsDrives);
  EXPECT_FALSE(view.look.showsFileName);

  disk.room["E:"] = 100 << 20;
  source = "C:\\gone.60D";
  Click(1);
  EXPECT_THAT(Click(2), ElementsAre(kCopying, "busy", "idle", kNotReady, kReselect, kDrive));
}

TEST_F(Wizard, CanBeClosedHoweverACopyEnds) {
  GoTo({0, 1});
  view.onMessages = [] { throw std::bad_alloc(); };
  EXPECT_THROW(Click(2), std::bad_alloc);
  EXPECT_TRUE(wizard.MayClose());
  EXPECT_EQ(view.log.back(), "idle");
  GoTo({0, 1});
  view.onMessages = [messages = 0]() mutable {
    if (++messages == 3) throw std::bad_alloc();
  };
  EXPECT_THAT(Click(2), Contains(kNotReady));
  EXPECT_TRUE(wizard.MayClose());
  EXPECT_FALSE(disk.HasFile("E:\\Part.60D"));
}

// At the end of the session, even one that came just before the copy, there is nobody to be asked.
TEST_F(Wizard, ClosesWhenTheSessionEnds) {
  for (int messages = 1; messages <= 2; ++messages) {
    GoTo({0, 1});
    view.messagesUntilEnd = messages;
    EXPECT_EQ(Click(2).back(), "close") << messages;
  }
}

// Another try would find no images, either.
TEST_F(Wizard, ClosesWhenTheCamerasHaveNoImages) {
  ChooseCamera();
  mdlSave::lngCamSelLow = 1 << 9;
  GoTo({0, 1});
  EXPECT_THAT(Click(2), ElementsAre(kCopying, "busy", "progress", "percent 47", "percent 97",
                                    std::string("tell ") + save_text::kNoImages, "idle", "close"));
}

TEST(RegGetString, TakesPlainStringsUpToTheirFirstZero) {
  using namespace std::string_literals;
  FakeRegistry registry;
  const auto read = [&](std::uint32_t type, const std::string& data) {
    registry.values[{platform::RegistryRoot::kCurrentUser, "Key", "Name"}] = {type, data};
    return RegGetString(registry, platform::RegistryRoot::kCurrentUser, "Key", "Name", "default");
  };
  EXPECT_EQ(read(1, "C:\\P\\a.exe\0rest"s), "C:\\P\\a.exe");
  EXPECT_EQ(read(2, "%WINDIR%\0"s), "default") << "which would have to be expanded";
  EXPECT_EQ(read(1, std::string(32766, 'x') + '\0').size(), 32766u);
  EXPECT_THROW(read(1, std::string(32767, 'x') + '\0'), RuntimeError);
  // The main window asks for a program's path when it starts.
  const std::string appPath = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe";
  registry.values[{platform::RegistryRoot::kLocalMachine, appPath, ""}] = {
      1, std::string(40000, 'x') + '\0'};
  EXPECT_EQ(AppPathOf(registry, "a.exe"), "");
}

TEST(GetDiskFreeMB, AsksTheFolderOfAPath) {
  struct Volumes : MemoryDisk {
    std::string asked;
    std::uint64_t bytes = 0;
    std::uint64_t FreeBytes(const std::string& folder) override {
      asked = folder;
      return bytes;
    }
  } volumes;
  for (const auto& [path, folder] : {std::pair{"E:\\a\\b.60D", "E:\\a"},
                                     {"E:\\b.60D", "E:\\"},
                                     {"\\\\server\\share\\a.60D", "\\\\server\\share"}}) {
    GetDiskFreeMB(volumes, path);
    EXPECT_EQ(volumes.asked, folder);
  }
  // Both halves of the number are taken as unsigned.
  volumes.bytes = 0xFFFFFFFF00000000u + 0xFFF80000u;
  EXPECT_EQ(GetDiskFreeMB(volumes, "E:\\"), 17592186044415.5);
  EXPECT_EQ(dblDiskFreeMB, 17592186044415.5);
}

}  // namespace
