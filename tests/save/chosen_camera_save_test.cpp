// What only a save of chosen cameras promises. That the images are kept as they were, of every
// block type, show the scripts that compare real files, and the fuzzer.

#include "tests/save/save_world.h"

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

TEST(SaveChosenCameras, ReadsOnlyTheListsAndTheChosenImages) {
  for (const int type : {0x00, 0x10, 0x20, 0x30, 0x60}) {
    BlockPlan block;
    for (int i = 0; i < 20; ++i)
      block.images.push_back({.camera = i % 4, .bytes = Picture(400, i)});
    const tools::Layout& layout = LayoutOf(type);
    std::string recording = Recording(type, {block});
    // PAL, and all other bits of that byte set.
    recording[static_cast<std::size_t>(layout.trailer + layout.videoByte)] =
        static_cast<char>(~layout.videoBit);
    SaveWorld save(recording, type);
    save.disk.totalRead = save.disk.reads = 0;
    EXPECT_EQ(save.Run(0b0010, 1, 1), SaveEnd::kSaved);
    EXPECT_EQ(save.disk.reads, 1 + 5);
    EXPECT_EQ(save.disk.totalRead, layout.trailerBytes + 5 * 512u);
    EXPECT_FALSE(BlocksOf(save.disk.View(kTarget), type == 0x60).at(0).ntsc);
  }
}

TEST(SaveChosenCameras, TakesTitlesAndTimesAsTheyAreMeant) {
  const BlockPlan block = {.images = {{.camera = 0, .title = "  "},
                                      {.camera = 2, .tail = false},
                                      {.camera = 1, .title = " OWN 12345678901234567890"}},
                           .titles = {"  GATE ", "TABLE 2", "   "},
                           .stamps = {{INT32_MAX, INT32_MIN + 1}}};
  SaveWorld save(Recording(0x00, {block}), 0x00);
  EXPECT_EQ(save.Run(0b111, 1, 1), SaveEnd::kSaved);
  std::vector<std::string> titles;
  for (const tools::Image& image : save.Saved()) titles.push_back(image.title);
  EXPECT_THAT(titles, ElementsAre("GATE", "Camera 3", "OWN 12345678901"))
      << "of the first 16 bytes";
  EXPECT_EQ(save.Saved().at(1).seconds, INT32_MIN) << "halfway through the block";
}

/// Bytes put over a block, and what that costs.
struct Damage {
  const char* what;
  int type;
  std::vector<tools::Image> images;
  std::size_t offset;
  std::string bytes;
  std::vector<std::size_t> kept;
  std::string losses;
};

constexpr char kOneLost[] = "The recording is damaged: 1 image could not be kept.";
constexpr char kTwoLost[] = "The recording is damaged: 2 images could not be kept.";
constexpr std::size_t kTrailer = 0x1FFC00;
constexpr std::size_t kCount = kTrailer + 32;
constexpr std::size_t kSecondEntry = kTrailer + 36 + 4;
constexpr std::size_t kSecondOldEntry = kTrailer + 288 + 5;

std::vector<Damage> Damages() {
  using namespace std::string_literals;
  const tools::Image first = {.bytes = Picture(400, 1), .title = "DOOR 1"};
  const tools::Image parts = {
      .bytes = Picture(400, 2), .title = "DOOR 2", .text = "12.50", .sound = Picture(512)};
  const tools::Image last = {.bytes = Picture(400, 3), .title = "DOOR 3"};
  const tools::Image big = {.bytes = Picture(4093 * 512 - 56 - 1), .title = "DOOR 4"};
  const tools::Image whole = {.bytes = Picture(4094 * 512), .tail = false};
  const std::vector<tools::Image> three = {first, parts, last}, plain = {first, last, first},
                                  full = {first, big};
  return {
      {"sound before the image", 0x30, three, kSecondEntry + 2, "\xF9", {0, 2}, kOneLost},
      {"text and sound only", 0x30, three, kSecondEntry + 2, "\x11", {0, 2}, kOneLost},
      {"two sectors of text", 0x30, three, kSecondEntry + 2, "\x0A", {0, 2}, kOneLost},
      {"bits beside the camera's", 0x30, three, kSecondEntry + 3, "\xF0", {0, 1, 2}, ""},
      // Sector numbers of 16 bits reach far beyond a block. The last one lets an image end in the
      // trailer, right at the block's end. Each costs two images: one ends where the next begins.
      {"sector 65535", 0x00, plain, kSecondOldEntry + 2, "\xFF\xFF", {2}, kTwoLost},
      {"sector 1", 0x00, plain, kSecondOldEntry + 2, "\x00\x01"s, {2}, kTwoLost},
      {"the trailer", 0x00, plain, kSecondOldEntry - 3, "\x0F\xFE\0\0\0\x10\x02"s, {2}, kTwoLost},
      // The last images of a block whose list says a wrong count, or a wrong end.
      {"a full block's end", 0x30, full, kSecondEntry + 4, "\x10\x00"s, {0, 1}, ""},
      {"a count too large", 0x30, full, kCount, "\x00\x03"s, {0, 1}, kOneLost},
      {"an end of 0 with flags", 0x30, full, kSecondEntry + 4, "\x20\x00"s, {0}, kOneLost},
      // The writer adds a tail, for which there is no room.
      {"an image that no block takes", 0x10, {whole}, 0, "", {}, kOneLost},
  };
}

TEST(SaveChosenCameras, LosesOnlyWhatIsDamagedAndTellsIt) {
  for (const Damage& damage : Damages()) {
    SCOPED_TRACE(damage.what);
    std::vector<tools::Image> expected;
    for (const std::size_t kept : damage.kept) expected.push_back(damage.images[kept]);
    std::string recording = Recording(damage.type, {{damage.images}});
    recording.replace(damage.offset, damage.bytes.size(), damage.bytes);
    SaveWorld save(recording, damage.type);
    // In place, as on a disc: what has the name would be cut when the file is made.
    if (expected.empty()) save.job.place = NewFile::Place::kOwnName;
    EXPECT_EQ(save.Run(1, 1, 1), expected.empty() ? SaveEnd::kNoImages : SaveEnd::kSaved);
    if (expected.empty())
      save.ExpectRefusal("The selected cameras have no images in the selected time range!");
    else
      EXPECT_THAT(save.Saved(), ElementsAreArray(expected));
    EXPECT_EQ(save.ToldFirst(), damage.losses);
  }
}

TEST(SaveChosenCameras, CountsBlocksWithoutAListAndNotWhatIsNotChosen) {
  const BlockPlan block = {.images = {{}, {.camera = 1}}};
  std::string recording = Recording(0x30, {block, block, block});
  recording[kSecondEntry] = '\x0F';  // Lies nowhere.
  recording[kBlock + kTrailer + 13] = '\x60';
  recording[kBlock + kTrailer + 34] ^= '\x80';  // The video standard of what is no block.
  SaveWorld save(recording);
  EXPECT_EQ(save.Run(2, 2, 3), SaveEnd::kSaved);
  EXPECT_EQ(save.ToldFirst(), "The recording is damaged: 1 block could not be kept.");
  EXPECT_EQ(save.Saved().size(), 1u);
  EXPECT_TRUE(BlocksOf(save.disk.View(kTarget), false).at(0).ntsc);
}

TEST(SaveMessages, TellWhatDamageHasCost) {
  const auto text = [](std::int64_t images, std::int64_t blocks) {
    return MessagesOf({.lostImages = images, .lostBlocks = blocks}).at(0).text;
  };
  EXPECT_EQ(text(0, 3), "The recording is damaged: 3 blocks could not be kept.");
  EXPECT_EQ(text(12, 1), "The recording is damaged: 12 images and 1 block could not be kept.");
  EXPECT_EQ(MessagesOf({.end = SaveEnd::kCancelled, .lostImages = 1}).size(), 0u);
}

TEST(SaveChosenCameras, BreathesInTheIndexPassAndCanBeCancelledThere) {
  constexpr int kBlocks = 20;
  SaveWorld save(std::string(kBlocks * kBlock, '\0'));
  save.progress.onMessages = [&, breaths = 0]() mutable {
    if (++breaths == 2) save.progress.cancelBefore = 1;
  };
  save.world.clock.step = std::chrono::milliseconds(6);
  save.disk.reads = 0;
  EXPECT_EQ(save.Run(1, 1, kBlocks), SaveEnd::kCancelled);
  EXPECT_EQ(save.disk.reads, 8);
  save.ExpectRefusal("");
}

TEST(SaveChosenCameras, RefusesWhatIsNoRecording) {
  SaveWorld save;
  mdlFileProcessing::bytBlockStatus = 0x50;
  EXPECT_EQ(save.Run(1), SaveEnd::kNotValid);
  save.ExpectRefusal("This file is not a valid source file!");
}

}  // namespace
