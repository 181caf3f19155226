#include "cdwizard/cd_copy.h"

#include "tests/cdwizard/wizard_world.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

namespace {

constexpr char kPlayerRoot[] = "C:\\Player\\";

/// A disc in drive E:, and a copy to it.
struct World : WizardWorld {
  World() { copy.SetPlayerRoot(kPlayerRoot); }

  void PutPlayer(const std::string& root = kPlayerRoot) {
    for (const std::string& path : PlayerFilePaths(root)) disk.Put(path, {path.back()});
  }
  CopyEnd Copy(bool withPlayer, const std::string& name = "Part", const std::string& drive = "E:") {
    copy.FilesSize(withPlayer);
    view.log.clear();
    return copy.CopyFiles(withPlayer, drive, name);
  }
  std::vector<std::string> OnDisc() { return disk.FilesBelow("E:"); }
  /// The files on the disc with their bytes.
  std::map<std::string, std::string> Disc() {
    std::map<std::string, std::string> files;
    for (const std::string& path : OnDisc()) files[path] = disk.View(path);
    return files;
  }

  CdCopy copy{outside.system, *this, view};
};

TEST(FilesSize, RoundsUpEachFileAndTheirSum) {
  struct SizedDisk : MemoryDisk {
    std::uint64_t size = 0;
    std::optional<std::uint64_t> FileBytes(const std::string&) override { return size; }
  };
  World world;
  PlatformWith<SizedDisk> outside;
  for (const std::string& path : PlayerFilePaths(kPlayerRoot)) outside.disk.Put(path, "");
  CdCopy copy{outside.system, world, world.view};
  copy.SetPlayerRoot(kPlayerRoot);
  for (const auto& [size, megabytes] : {std::pair(0ull, 0),
                                        {102ull << 10, 1},
                                        {(102ull << 10) + 1, 2},
                                        {200ull << 20, 2000},
                                        {1ull << 40, 2048}}) {
    outside.disk.size = size;
    EXPECT_EQ(copy.FilesSize(true), megabytes + 4) << size;
  }
}

// A folder that is empty or relative would mean whatever folder is current.
TEST(FilesSize, TakesNoRelativeFolder) {
  for (const std::string root : {"", "\\Player\\", "C:Player\\"}) {
    World world;
    world.PutPlayer(root);
    world.copy.SetPlayerRoot(root);
    EXPECT_EQ(world.copy.FilesSize(true), 4);
    EXPECT_EQ(world.view.log.size(), 1u) << root;
  }
}

TEST(CopyFiles, GivesTheNameItsEnding) {
  for (const auto& [name, is20D, onDisc] : {std::tuple{"a", false, "E:\\a.60D"},
                                            {"a.60d", false, "E:\\a.60d.60D"},
                                            {"a.60D", true, "E:\\a.60D.20D"},
                                            {".20D", true, "E:\\.20D"}}) {
    World world;
    mdlFileProcessing::bln20D = is20D;
    EXPECT_EQ(world.Copy(false, name), CopyEnd::kCopied);
    EXPECT_THAT(world.OnDisc(), ElementsAre(onDisc));
  }
}

TEST(CopyFiles, ClearsADiscThatCarriesAPlayer) {
  World world;
  world.PutPlayer();
  for (const char* path : {"E:\\Tessaview Notes.txt", "E:\\old.60D", "E:\\Tessaview\\a\\old.dll",
                           "E:\\Other\\kept.txt"})
    world.disk.Put(path, "old");
  ASSERT_EQ(world.Copy(true), CopyEnd::kCopied);
  EXPECT_THAT(world.OnDisc(),
              ElementsAre("E:\\Autorun.inf", "E:\\Other\\kept.txt", "E:\\Tessaview Notes.txt",
                          "E:\\Tessaview\\comdlg32.ocx", "E:\\Tessaview\\kdu_v42R.dll",
                          "E:\\Tessaview\\msvbvm60.dll", "E:\\Tessaview\\Oleaut32.dll",
                          "E:\\Tessaview\\Part.60D", "E:\\Tessaview\\pxcodec.dll",
                          "E:\\Tessaview\\Tessaview.exe", "E:\\Tessaview\\tvjpeg.dll",
                          "E:\\WIN95.BAT.bat"));
  EXPECT_EQ(world.disk.View("E:\\Autorun.inf"), "f");
  EXPECT_EQ(world.disk.At("E:\\Autorun.inf")->written,
            world.disk.At("C:\\Player\\TessaviewCD\\Autorun.inf")->written);
  EXPECT_EQ(world.disk.View("E:\\Tessaview\\Part.60D").size(), 2 * kBlock);
  EXPECT_THAT(world.view.log,
              ElementsAre("progress", "percent 1", "percent 2", "percent 3", "percent 4",
                          "percent 6", "percent 8", "percent 10", "percent 12", "percent 14",
                          "percent 16", "percent 58", "percent 100"));
}

// Nor is the disc cleared when the player is not copied: its files must have been counted.
TEST(CopyFiles, LeavesAloneWhatIsNoPlayers) {
  World world;
  world.first = 2;
  world.last = 3;
  world.PutPlayer();
  world.disk.Put("E:\\own.txt", "stays");
  world.disk.Link(kSource, "E:\\the source.60D");
  ASSERT_EQ(world.Copy(true), CopyEnd::kCopied);
  EXPECT_THAT(world.OnDisc(), IsSupersetOf({"E:\\own.txt", "E:\\Autorun.inf"}));
  EXPECT_EQ(world.disk.View("E:\\Tessaview\\Part.60D"), ThreeBlocks().substr(kBlock));
  world.disk.Remove("C:\\Player\\TessaviewCD\\Autorun.inf");
  const std::size_t before = world.OnDisc().size();
  ASSERT_EQ(world.Copy(true, "Other"), CopyEnd::kCopied);
  EXPECT_EQ(world.OnDisc().size(), before + 1);
  EXPECT_THAT(world.view.log, ElementsAre("progress", "percent 50", "percent 100"));
}

/// Copies that would lose a file or write none: what makes them so, and what is asked for.
const struct {
  const char* name;
  void (*prepare)(World& world);
  bool withPlayer = true;
  const char* drive = "E:";
} kRefusals[] = {
    // Files are told apart by what they are: the name on the disc may be another one.
    {"source as target", [](World& world) { world.disk.Link(kSource, "E:\\Part.60D"); }, false},
    {"source in the root", [](World& world) { world.disk.Link(kSource, "E:\\anything"); }},
    {"source below", [](World& world) { world.disk.Link(kSource, "E:\\Tessaview\\deep\\x"); }},
    {"player file in the root",
     [](World& world) { world.disk.Link(PlayerFilePaths(kPlayerRoot).back(), "E:\\x.dll"); }},
    {"source beside a file that cannot be told apart",
     [](World& world) {
       world.disk.Link(kSource, "E:\\anything");
       world.disk.Put("E:\\unknown", "old");
       world.disk.At("E:\\unknown")->hasIdentity = false;
     }},
    {"a source that cannot be told apart",
     [](World& world) {
       world.disk.At(kSource)->hasIdentity = false;
       world.disk.Put("E:\\known", "old");
     }},
    {"a file that cannot be told apart",
     [](World& world) {
       world.disk.Put("E:\\unknown", "old");
       world.disk.At("E:\\unknown")->hasIdentity = false;
     }},
    {"no CD drive", [](World& world) { world.disk.Put("F:\\Tessaview Notes.txt", "old"); }, true,
     "F:"},
    {"empty range", [](World& world) { world.first = 3; }},
};

TEST(CopyFiles, TouchesNothingWhenItRefuses) {
  for (const auto& refusal : kRefusals) {
    World world;
    world.PutPlayer();
    world.disk.Put("E:\\Tessaview Notes.txt", "mark");
    world.disk.Put("E:\\Tessaview\\x.dll", "old");
    refusal.prepare(world);
    const auto before = world.disk.files;
    EXPECT_EQ(world.Copy(refusal.withPlayer, "Part", refusal.drive), CopyEnd::kNotReady);
    EXPECT_TRUE(world.disk.files == before) << refusal.name;
    EXPECT_EQ(world.disk.View(kSource), ThreeBlocks()) << refusal.name;
  }
}

// The last points are for closing the file.
TEST(CopyFiles, WritesTheChosenCameras) {
  World world;
  world.ChooseCamera();
  mdlSave::blnSaving = false;  // Another window's: it cancels nothing here.
  world.last = 3;
  world.PutPlayer();
  ASSERT_EQ(world.Copy(true), CopyEnd::kCopied);
  world.view.log.erase(world.view.log.begin(), world.view.log.end() - 4);
  EXPECT_THAT(world.view.log, ElementsAre("percent 41", "percent 69", "percent 97", "percent 100"));
  const auto saved = ImagesOf(world.disk.View("E:\\Tessaview\\Part.60D"), false);
  EXPECT_EQ(saved.size(), 3u);
  for (const tools::Image& image : saved) EXPECT_EQ(image.camera, 1);
}

// The session ends at any moment at which messages run: no half of a recording stays.
TEST(CopyFiles, StopsWhenTheSessionEnds) {
  for (const bool someCameras : {false, true})
    for (int messages = 1;; ++messages) {
      World world;
      world.ChooseCamera();
      mdlSave::blnSomeCameras = someCameras;
      world.PutPlayer();
      world.view.messagesUntilEnd = messages;
      const CopyEnd end = world.Copy(true);
      if (end == CopyEnd::kCopied) break;
      EXPECT_EQ(end, CopyEnd::kOver) << messages;
      EXPECT_FALSE(world.disk.HasFile("E:\\Tessaview\\Part.60D")) << messages;
      EXPECT_EQ(world.disk.OpenHandles(), 0u);
    }
}

// Whatever call of the disk fails: nothing stays open, no source is lost, and either all files are
// written whole or the recording is not there at all. Only where removing fails for good, half a
// file can stay.
void ExpectAllOrNothing(bool someCameras, bool withPlayer) {
  const std::string target = withPlayer ? "E:\\Tessaview\\Part.60D" : "E:\\Part.60D";
  std::map<std::string, std::string> whole;
  std::vector<std::string> sources;
  // The first of all meets no fault.
  const auto copy = [&](Fault& fault) {
    World world;
    world.disk.Put(kSource, ThreeBlocks().substr(0, kBlock));
    world.last = 1;
    world.ChooseCamera();
    mdlSave::blnSomeCameras = someCameras;
    if (withPlayer) world.PutPlayer();
    world.disk.Put("E:\\Tessaview Notes.txt", "old");
    world.copy.FilesSize(withPlayer);
    world.disk.fault = fault;
    world.disk.fault.reason = {platform::Failure::Kind::kNoAnswer};
    const bool copied = world.copy.CopyFiles(withPlayer, "E:", "Part") == CopyEnd::kCopied;
    fault = std::exchange(world.disk.fault, {});

    SCOPED_TRACE(testing::PrintToString(fault));
    if (whole.empty()) whole = world.Disc(), sources = world.disk.FilesBelow("C:");
    EXPECT_EQ(world.disk.OpenHandles(), 0u);
    EXPECT_TRUE(copied || !fault.met.empty());
    EXPECT_EQ(world.disk.FilesBelow("C:"), sources);
    EXPECT_THAT(world.view.log, Not(Contains(testing::HasSubstr("does not answer"))));
    const bool toldOfShortRead =
        testing::Value(world.view.log, Contains("tell as application Error reading file ..."));
    if (copied && !toldOfShortRead)
      EXPECT_TRUE(world.Disc() == whole);
    else if (!copied && !fault.lasting)
      EXPECT_FALSE(world.disk.HasFile(target));
  };
  Fault none;
  copy(none);
  ForEachFault(copy);
}

TEST(CopyFiles, WritesAllOrNothingWhateverCallFails) {
  for (const bool someCameras : {false, true})
    for (const bool withPlayer : {false, true}) ExpectAllOrNothing(someCameras, withPlayer);
}

}  // namespace
