#include "cdwizard/cd_copy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "capture/mdlFileProcessing.h"
#include "save/save_messages.h"
#include "save/save_state.h"
#include "tests/cdwizard/fake_wizard_view.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_reader.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

namespace {

constexpr char kPlayerRoot[] = "C:\\Player\\";
constexpr char kSource[] = "C:\\Rec\\cam.60D";
constexpr std::size_t kBlock = 2097152;

const std::string& Letters() {
  static const std::string letters =
      std::string(kBlock, 'a') + std::string(kBlock, 'b') + std::string(kBlock, 'c');
  return letters;
}

/// A disc in drive E: and a recording of three blocks, "aaa...", "bbb...", "ccc...".
struct World {
  explicit World(const std::string& recording = Letters()) {
    mdlSave::blnSomeCameras = false;
    mdlFileProcessing::bln20D = false;
    disk.AddCdRom("E:");
    disk.Put(kSource, recording);
    copy.SetPlayerRoot(kPlayerRoot);
  }

  void PutPlayer(std::size_t bytes = 10) {
    for (const std::string& path : PlayerFilePaths(kPlayerRoot))
      disk.Put(path, std::string(bytes, path.back()));
  }
  bool Copy(bool withPlayer, const std::string& name = "Part", const std::string& drive = "E:") {
    copy.FilesSize(withPlayer);
    view.log.clear();
    return copy.CopyFiles(withPlayer, drive, name) == CopyEnd::kCopied;
  }
  std::vector<std::string> OnDisc() { return disk.FilesBelow("E:"); }

  FakePlatform outside;
  MemoryDisk& disk = outside.disk;
  FakeMainWindow mainWindow;
  FakeWizardView view;
  CdCopy copy{outside.system, mainWindow, view};
};

/// A disk whose files are as large as a test says, one after the other; the last ones have nothing.
struct SizedDisk : MemoryDisk {
  std::deque<std::uint64_t> sizes;
  std::optional<std::uint64_t> FileBytes(const std::string&) override {
    if (sizes.empty()) return 0;
    const std::uint64_t size = sizes.front();
    sizes.pop_front();
    return size;
  }
};

TEST(FilesSize, RoundsUpEachFileAndTheirSum) {
  const std::pair<std::deque<std::uint64_t>, int> kMegabytes[] = {
      {{}, 0},
      {{1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, 1},
      {{1048576}, 1},
      {{1048575, 1}, 2},
      {{1047552, 1024}, 1},
      {{2147481600}, 2048},
      {{2146435072}, 2047},
      {{2147483647}, 2048},
      {{1 << 30, 1 << 30, 1 << 30}, 2048},
      {{1ull << 40, 5}, 2048}};
  for (const auto& [sizes, megabytes] : kMegabytes) {
    PlatformWith<SizedDisk> outside;
    FakeMainWindow mainWindow;
    FakeWizardView view;
    CdCopy copy{outside.system, mainWindow, view};
    copy.SetPlayerRoot(kPlayerRoot);
    for (const std::string& path : PlayerFilePaths(kPlayerRoot)) outside.disk.Put(path, "");
    outside.disk.sizes = sizes;
    EXPECT_EQ(copy.FilesSize(true), megabytes + mainWindow.estimate);
  }
}

TEST(FilesSize, OffersToGoOnWithoutThePlayer) {
  World world;
  EXPECT_EQ(world.copy.FilesSize(false), 4);
  EXPECT_THAT(world.view.log, IsEmpty());
  world.PutPlayer(3 << 20);
  world.disk.Remove("C:\\Player\\TessaviewCD\\Tessaview\\pxcodec.dll");
  world.view.answers = {true, false};
  EXPECT_EQ(world.copy.FilesSize(true), 4);
  EXPECT_EQ(world.copy.FilesSize(true), 0);
  const std::string question =
      "ask The file (C:\\Player\\TessaviewCD\\Tessaview\\pxcodec.dll) can not be found! \r\n"
      "You can only save the selected file but not the Tessaview files. Do you want to continue?";
  EXPECT_THAT(world.view.log, ElementsAre(question, question));
}

// A folder that is empty or relative would mean whatever folder is current.
TEST(FilesSize, TakesNoRelativeFolder) {
  for (const std::string root : {"", "Player\\", "\\Player\\", "C:Player\\"}) {
    World world;
    for (const std::string& path : PlayerFilePaths(root)) world.disk.Put(path, "x");
    world.copy.SetPlayerRoot(root);
    EXPECT_EQ(world.copy.FilesSize(true), 4);
    EXPECT_EQ(world.view.log.size(), 1u) << root;
  }
}

TEST(CopyFiles, WritesTheChosenBlocks) {
  World world;
  world.mainWindow.first = 2;
  world.mainWindow.last = 3;
  world.disk.Put("E:\\Part.60D", std::string(5 * kBlock, 'o'));
  world.disk.Link(kSource, "E:\\Tessaview\\source.60D");
  ASSERT_TRUE(world.Copy(false));
  EXPECT_EQ(world.disk.Bytes("E:\\Part.60D"), std::string(kBlock, 'b') + std::string(kBlock, 'c'));
  EXPECT_THAT(world.OnDisc(), ElementsAre("E:\\Part.60D", "E:\\Tessaview\\source.60D"));
  EXPECT_THAT(world.view.log, ElementsAre("progress", "percent 50", "percent 100"));
  EXPECT_EQ(world.disk.OpenHandles(), 0u);
}

TEST(CopyFiles, GivesTheNameItsEnding) {
  for (const auto& [name, is20D, onDisc] : {std::tuple{"a", false, "E:\\a.60D"},
                                            {"a.60D", false, "E:\\a.60D"},
                                            {"a.60d", false, "E:\\a.60d.60D"},
                                            {"a.60D", true, "E:\\a.60D.20D"},
                                            {".20D", true, "E:\\.20D"}}) {
    World world;
    mdlFileProcessing::bln20D = is20D;
    EXPECT_TRUE(world.Copy(false, name));
    EXPECT_THAT(world.OnDisc(), ElementsAre(onDisc));
  }
}

TEST(CopyFiles, ClearsADiscThatCarriesAPlayer) {
  World world;
  world.PutPlayer();
  for (const char* path : {"E:\\Tessaview Notes.txt", "E:\\old.60D", "E:\\Tessaview\\a\\old.dll",
                           "E:\\Other\\kept.txt"})
    world.disk.Put(path, "old");
  ASSERT_TRUE(world.Copy(true));
  EXPECT_THAT(world.OnDisc(),
              ElementsAre("E:\\Autorun.inf", "E:\\Other\\kept.txt", "E:\\Tessaview Notes.txt",
                          "E:\\Tessaview\\comdlg32.ocx", "E:\\Tessaview\\kdu_v42R.dll",
                          "E:\\Tessaview\\msvbvm60.dll", "E:\\Tessaview\\Oleaut32.dll",
                          "E:\\Tessaview\\Part.60D", "E:\\Tessaview\\pxcodec.dll",
                          "E:\\Tessaview\\Tessaview.exe", "E:\\Tessaview\\tvjpeg.dll",
                          "E:\\WIN95.BAT.bat"));
  EXPECT_EQ(world.disk.Bytes("E:\\Autorun.inf"), "ffffffffff");
  EXPECT_EQ(world.disk.Bytes("E:\\Tessaview\\Part.60D")->size(), 2 * kBlock);
  EXPECT_THAT(world.view.log,
              ElementsAre("progress", "percent 1", "percent 2", "percent 3", "percent 4",
                          "percent 6", "percent 8", "percent 10", "percent 12", "percent 14",
                          "percent 16", "percent 58", "percent 100"));
}

// Nor is the disc cleared when the player is not copied: its files must have been counted.
TEST(CopyFiles, LeavesAloneWhatIsNoPlayers) {
  World world;
  world.PutPlayer();
  world.disk.Put("E:\\own.txt", "stays");
  world.disk.Link(kSource, "E:\\the source.60D");
  ASSERT_TRUE(world.Copy(true));
  EXPECT_THAT(world.OnDisc(), IsSupersetOf({"E:\\own.txt", "E:\\Autorun.inf"}));
  world.disk.Remove("C:\\Player\\TessaviewCD\\Autorun.inf");
  const std::size_t before = world.OnDisc().size();
  ASSERT_TRUE(world.Copy(true, "Other"));
  EXPECT_EQ(world.OnDisc().size(), before + 1);
}

/// A copy that would lose a file or write none: what makes it so, and what is asked for.
struct Refusal {
  const char* name;
  void (*prepare)(World& world);
  bool withPlayer = true;
  const char* drive = "E:";
};

const Refusal kRefusals[] = {
    // Files are told apart by what they are: the name on the disc may be another one.
    {"source as target", [](World& world) { world.disk.Link(kSource, "E:\\Part.60D"); }, false},
    {"source in the root", [](World& world) { world.disk.Link(kSource, "E:\\anything"); }},
    {"source below", [](World& world) { world.disk.Link(kSource, "E:\\Tessaview\\deep\\x"); }},
    {"player file in the root",
     [](World& world) {
       world.disk.Link("C:\\Player\\TessaviewCD\\Tessaview\\tvjpeg.dll", "E:\\x.dll");
     }},
    {"no CD drive", [](World& world) { world.disk.Put("F:\\Tessaview Notes.txt", "old"); }, true,
     "F:"},
    {"empty range", [](World& world) { world.mainWindow.first = 3; }},
};

TEST(CopyFiles, TouchesNothingWhenItRefuses) {
  for (const Refusal& refusal : kRefusals) {
    SCOPED_TRACE(refusal.name);
    World world;
    world.PutPlayer();
    world.disk.Put("E:\\Tessaview Notes.txt", "mark");
    world.disk.Put("E:\\Tessaview\\x.dll", "old");
    refusal.prepare(world);
    const auto before = world.disk.Paths();
    EXPECT_FALSE(world.Copy(refusal.withPlayer, "Part", refusal.drive));
    EXPECT_EQ(world.disk.Paths(), before);
    EXPECT_EQ(world.disk.Bytes(kSource)->size(), 3 * kBlock);
  }
}

/// A recording of three cameras with an image of each in every block.
std::string RecordingOf(int blocks) {
  RecordingBuilder recording(0x30);
  for (int i = 0; i < blocks; ++i) {
    recording.Block();
    for (int camera = 0; camera < 3; ++camera)
      recording.Image({.camera = camera, .seconds = 1000 + i, .bytes = Picture(900, camera + i)});
  }
  return recording.Bytes();
}

/// Scans the recording and chooses camera 2.
void ChooseCamera(World& world) {
  mdlFileProcessing::ScanSourceFile(world.disk, world.outside.dates, kSource);
  mdlSave::blnSomeCameras = true;
  mdlSave::lngCamSelLow = 1 << 1;
}

// The last points are for closing the file.
TEST(CopyFiles, WritesTheChosenCameras) {
  const std::string recording = RecordingOf(3);
  for (const bool withPlayer : {false, true}) {
    World world(recording);
    ChooseCamera(world);
    mdlSave::blnSaving = false;  // Another window's: it cancels nothing here.
    world.mainWindow.last = 3;
    if (withPlayer) world.PutPlayer();
    ASSERT_TRUE(world.Copy(withPlayer));
    world.view.log.erase(world.view.log.begin(), world.view.log.begin() + (withPlayer ? 11 : 1));
    if (withPlayer)
      EXPECT_THAT(world.view.log,
                  ElementsAre("percent 41", "percent 69", "percent 97", "percent 100"));
    else
      EXPECT_THAT(world.view.log,
                  ElementsAre("percent 30", "percent 64", "percent 97", "percent 100"));
    const auto saved =
        ImagesOf(world.disk.View(withPlayer ? "E:\\Tessaview\\Part.60D" : "E:\\Part.60D"), false);
    EXPECT_EQ(saved.size(), 3u);
    for (const tools::Image& image : saved) EXPECT_EQ(image.camera, 1);
  }
}

// The session ends at any moment at which messages run: no half of a recording stays.
TEST(CopyFiles, StopsWhenTheSessionEnds) {
  for (const bool someCameras : {false, true})
    for (int messages = 1;; ++messages) {
      World world(RecordingOf(3));
      ChooseCamera(world);
      mdlSave::blnSomeCameras = someCameras;
      world.PutPlayer();
      world.copy.FilesSize(true);
      world.view.messagesUntilEnd = messages;
      const CopyEnd end = world.copy.CopyFiles(true, "E:", "Part");
      if (end == CopyEnd::kCopied) break;
      EXPECT_EQ(end, CopyEnd::kOver) << messages;
      EXPECT_FALSE(world.disk.HasFile("E:\\Tessaview\\Part.60D")) << messages;
      EXPECT_EQ(world.disk.OpenHandles(), 0u);
    }
}

class CopyWithFaults : public testing::TestWithParam<std::tuple<bool, bool>> {
 protected:
  /// Copies one block with the fault, whole or one camera of it, with or without the player.
  bool Copy(World& world, const Fault& fault = {}) {
    const auto& [someCameras, withPlayer] = GetParam();
    world.mainWindow.last = 1;
    ChooseCamera(world);
    mdlSave::blnSomeCameras = someCameras;
    if (withPlayer) world.PutPlayer();
    world.disk.Put("E:\\Tessaview Notes.txt", "old");
    world.copy.FilesSize(withPlayer);
    world.disk.fault = fault;
    return world.copy.CopyFiles(withPlayer, "E:", "Part") == CopyEnd::kCopied;
  }

  const std::string recording_ = RecordingOf(1);
  const std::string target_ = std::get<1>(GetParam()) ? "E:\\Tessaview\\Part.60D" : "E:\\Part.60D";
};

// Whatever call of the disk fails: nothing stays open, no source is lost, and either all is written
// or the recording is not there at all. Only where removing fails for good, half a file can stay.
TEST_P(CopyWithFaults, WritesAllOrNothingWhateverCallFails) {
  World good(recording_);
  ASSERT_TRUE(Copy(good));
  const std::string_view whole = good.disk.View(target_);
  const auto sources = good.disk.FilesBelow("C:");
  ForEachFault([&](Fault& fault) {
    World world(recording_);
    const bool copied = Copy(world, fault);
    fault = std::exchange(world.disk.fault, {});

    SCOPED_TRACE(testing::PrintToString(fault));
    EXPECT_EQ(world.disk.OpenHandles(), 0u);
    EXPECT_EQ(mdlFileProcessing::hSourceFile, platform::FileHandle::kInvalid);
    EXPECT_TRUE(copied || !fault.met.empty());
    EXPECT_EQ(world.disk.FilesBelow("C:"), sources);
    const bool toldOfShortRead =
        testing::Value(world.view.log, Contains("tell as application Error reading file ..."));
    if (copied && !toldOfShortRead)
      EXPECT_TRUE(world.disk.View(target_) == whole);
    else if (!copied && !fault.lasting)
      EXPECT_FALSE(world.disk.HasFile(target_));
  });
}

INSTANTIATE_TEST_SUITE_P(All, CopyWithFaults, testing::Combine(testing::Bool(), testing::Bool()));

}  // namespace
