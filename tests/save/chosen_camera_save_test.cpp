#include "save/camera_index.h"
#include "tests/save/save_world.h"
#include "tests/support/recording_reader.h"

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

constexpr std::int32_t kStart = 1'400'000'000;

struct SaveOfCameras : SaveWorld {
  using SaveWorld::SaveWorld;
  std::vector<tools::Image> Saved() const { return ImagesOf(world.disk.View(kTarget), is20D); }
};

bool HasTitleTable(int type) {
  return type == 0x00 || type == 0x10;
}

/// The i-th image of a recording: no two are alike, and there is one of every sort that the block
/// type knows. All titles are of one length, so that none shows through behind another.
tools::Image Sample(int type, int i) {
  tools::Image image = {
      .camera = i % 5,
      .seconds = kStart + i * 3,
      .bytes = Picture(i == 7 ? 300000 : i * i * 41 % 9000 + 1, i),
      .title = i % 4 == 0 ? std::string(i % 8, ' ') : "DOOR " + std::to_string(100 + i % 7),
      .flags = i / 2 % 4};
  if (HasTitleTable(type)) return image;
  image.text = i % 3 == 0 ? std::string(i % 50 * 9 + 1, '\xE9') : "";
  image.sound = Picture(i % 5 == 2 ? 512 * (i % 31 + 1) : 0, i);
  return image;
}

constexpr int kImagesPerBlock = 40;

RecordingBuilder SampleRecording(int type, int blocks) {
  RecordingBuilder builder(type);
  for (int i = 0; i < blocks * kImagesPerBlock; ++i) {
    if (i % kImagesPerBlock == 0) builder.Block();
    builder.Image(Sample(type, i));
    if (HasTitleTable(type)) builder.Titles({"TABLE 00", "TABLE 01", "TABLE 02", "TABLE 03"});
  }
  return builder;
}

/// What a save is to keep of blocks `first` to `last`.
std::vector<tools::Image> KeptSamples(int type, int first, int last, std::int32_t cameras) {
  std::vector<tools::Image> kept;
  for (int i = (first - 1) * kImagesPerBlock; i < last * kImagesPerBlock; ++i) {
    tools::Image image = Sample(type, i);
    if ((cameras >> image.camera & 1) == 0) continue;
    const std::string number = std::to_string(image.camera);
    if (image.title.find_first_not_of(' ') == std::string::npos)
      image.title = HasTitleTable(type) && image.camera < 4
                        ? "TABLE 0" + number
                        : "Camera " + std::to_string(image.camera + 1);
    if (type == 0x20) image.sound = "";
    kept.push_back(image);
  }
  return kept;
}

class EveryType : public ::testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Types, EveryType, ::testing::Values(0x00, 0x10, 0x20, 0x30, 0x60),
                         [](const auto& test) { return "Type" + std::to_string(test.param); });

TEST_P(EveryType, KeepsTheChosenImagesAsTheyWere) {
  SaveOfCameras save(GetParam(), SampleRecording(GetParam(), 4).Bytes());
  for (const std::int32_t cameras : {0b00001, 0b10110, 0b11111}) {
    save.progress.log.clear();
    EXPECT_EQ(save.Run(2, 4, cameras), SaveEnd::kSaved);
    EXPECT_THAT(save.Saved(), ElementsAreArray(KeptSamples(GetParam(), 2, 4, cameras)));
    std::erase(save.progress.log, "yield");
    EXPECT_THAT(save.progress.log, ElementsAre("1 of 3", "2 of 3", "3 of 3"));
    EXPECT_EQ(MessageOfLosses(save.result), "");
    save.ExpectNothingLeft();
  }
}

TEST_P(EveryType, ReadsOnlyTheListsAndTheChosenImages) {
  RecordingBuilder builder(GetParam());
  builder.Block();
  for (int i = 0; i < 20; ++i) builder.Image({.camera = i % 4, .bytes = Picture(400, i)});
  SaveOfCameras save(GetParam(), builder.Bytes());
  const auto bytesBefore = save.world.disk.BytesRead();
  const int readsBefore = save.world.disk.Reads();
  EXPECT_EQ(save.Run(1, 1, 0b0010), SaveEnd::kSaved);
  EXPECT_EQ(save.world.disk.Reads() - readsBefore, 1 + 5);
  const std::uint64_t trailer = kBlock - static_cast<std::size_t>(builder.TrailerOffset());
  EXPECT_EQ(save.world.disk.BytesRead() - bytesBefore, trailer + 5 * 512);
}

TEST_P(EveryType, TakesNoMoreImagesThanATrailerHolds) {
  const std::map<int, std::pair<int, int>> kCountAndMost = {{0x00, {28, 146}},
                                                            {0x10, {28, 146}},
                                                            {0x20, {32, 159}},
                                                            {0x30, {32, 246}},
                                                            {0x60, {32, 758}}};
  const auto [count, most] = kCountAndMost.at(GetParam());
  RecordingBuilder builder = SampleRecording(GetParam(), 1);
  std::string recording = builder.Bytes();
  recording.replace(builder.TrailerOffset() + count, 2, "\xFF\xFF");
  SaveOfCameras save(GetParam(), recording);
  CameraIndex index = IndexBlockRange(save.world.system, save.progress, kSource, 1, 1);
  EXPECT_EQ(std::ssize(index.blocks[1].images), most);
  EXPECT_EQ(save.Run(1, 1, 0xFFFF), SaveEnd::kSaved);
  // The entries behind the list are all of camera 1 and lie nowhere.
  auto saved = save.Saved();
  saved.resize(kImagesPerBlock - 1);
  auto expected = KeptSamples(GetParam(), 1, 1, 0xFFFF);
  expected.pop_back();
  EXPECT_THAT(saved, ElementsAreArray(expected));
}

TEST_P(EveryType, FailsOnABlockThatTheSourceNoLongerHolds) {
  for (const std::size_t lost : {std::size_t{1}, std::size_t{4000}, kBlock}) {
    SaveOfCameras save(GetParam(), SampleRecording(GetParam(), 3).Bytes());
    save.world.disk.Put(kSource, save.source = save.source.substr(0, 3 * kBlock - lost));
    EXPECT_EQ(save.Run(1, 3, 2), SaveEnd::kNotRead) << lost;
    save.ExpectOneRefusal("Error reading file ...");
    EXPECT_EQ(save.world.disk.View(kTarget), "old");
  }
}

TEST(SaveChosenCameras, ReadsEachBlockByItsOwnType) {
  const auto recording = [] {
    std::string bytes;
    for (const int type : {0x30, 0x20, 0x60, 0x00, 0x10, 0x30}) {
      RecordingBuilder builder(type);
      bytes += builder.Block().Image(Sample(0x00, type + 1)).Bytes();
    }
    return bytes;
  }();
  SaveOfCameras save(0x30, recording);
  ASSERT_EQ(save.Run(1, 6, 0xFFFF), SaveEnd::kSaved);
  std::vector<tools::Image> expected;
  for (const int type : {0x30, 0x20, 0x00, 0x10, 0x30}) expected.push_back(Sample(0x00, type + 1));
  auto saved = save.Saved();
  EXPECT_THAT(saved, ElementsAreArray(expected));
}

TEST(SaveChosenCameras, KeepsTheSectorsThatAnImageHad) {
  for (const int type : {0x30, 0x60}) {
    RecordingBuilder builder(type);
    builder.Block();
    for (const int size : {1, 455, 511, 512, 967, 20000})
      builder.Image({.bytes = Picture(size, size), .title = "DOOR"});
    SaveOfCameras save(type, builder.Bytes());
    EXPECT_EQ(save.Run(1, 1, 1), SaveEnd::kSaved);
    const auto before = ReadRecording(save.source, save.is20D).at(0).images;
    EXPECT_THAT(ReadRecording(*save.world.disk.Bytes(kTarget), save.is20D).at(0).images,
                ElementsAreArray(before));
  }
}

TEST(SaveChosenCameras, TakesWhatOldImagesWithoutTailLack) {
  const auto image = [](int camera, int offset) {
    return tools::Image{
        .camera = camera, .seconds = kStart + offset, .bytes = Picture(1024), .tail = false};
  };
  // A list of type 0x20 tells the seconds; the others spread the images over the block's time.
  const std::pair<int, std::vector<int>> kOffsets[] = {
      {0x20, {0, 10, 11, 90}}, {0x00, {0, 30, 60, 90}}, {0x10, {0, 30, 60, 90}}};
  for (const auto& [type, offsets] : kOffsets) {
    SaveOfCameras save(type, RecordingBuilder(type)
                                 .Block()
                                 .Titles({"  GATE ", "    "})
                                 .Image(image(0, 0))
                                 .Image(image(1, 10))
                                 .Image(image(0, 11))
                                 .Image(image(2, 90))
                                 .Bytes());
    EXPECT_EQ(save.Run(1, 1, 0b111), SaveEnd::kSaved);
    const auto saved = save.Saved();
    ASSERT_EQ(saved.size(), 4u);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(saved[i].seconds, kStart + offsets[i]) << type;
      EXPECT_EQ(saved[i].bytes, Picture(1024));
    }
    EXPECT_EQ(saved[0].title, type == 0x20 ? "Camera 1" : "GATE");
    EXPECT_EQ(saved[3].title, "Camera 3");
  }
}

/// Bytes put over a recording of type 0x30 with three images of one sector each, the second with
/// text and sound, and what is left of the second.
struct Damage {
  const char* name;
  int offset;
  std::string bytes;
  bool kept = false;
  std::string text = "";
};

class DamagedImage : public ::testing::TestWithParam<Damage> {};

TEST_P(DamagedImage, CostsItselfOnly) {
  const Damage& damage = GetParam();
  std::vector<tools::Image> images;
  for (int i = 0; i < 3; ++i)
    images.push_back({.camera = i, .seconds = kStart, .bytes = Picture(400, i), .title = "DOOR 1"});
  images[1].text = "12.50";
  images[1].sound = Picture(512);
  RecordingBuilder builder(0x30);
  builder.Block();
  for (const tools::Image& image : images) builder.Image(image);
  std::string recording = builder.Bytes();
  recording.replace(damage.offset, damage.bytes.size(), damage.bytes);
  images[1].text = damage.text;
  if (!damage.kept) images.erase(images.begin() + 1);

  SaveOfCameras save(0x30, recording);
  EXPECT_EQ(save.Run(1, 1, 0b111), SaveEnd::kSaved);
  EXPECT_THAT(save.Saved(), ElementsAreArray(images));
  EXPECT_EQ(MessageOfLosses(save.result),
            damage.kept ? "" : "The recording is damaged: 1 image could not be kept.");
  EXPECT_EQ(save.Run(1, 1, 0b101), SaveEnd::kSaved);
  EXPECT_EQ(MessageOfLosses(save.result), "") << "of a camera that is not chosen";
}

constexpr int kSecondEntry = 0x1FFC00 + 36 + 4;
constexpr int kSecondText = 1024;

const Damage kDamages[] = {
    {"SoundBeforeTheImage", kSecondEntry + 2, "\xF9"},
    {"TextAndSoundOnly", kSecondEntry + 2, "\x11"},
    {"NoTextMarker", kSecondText, "\x21", true},
    {"NegativeTextLength", kSecondText + 4, "\xFF", true},
    {"LongText", kSecondText + 4, "\x7F", true, "12.50" + std::string(495, '\0')},
    {"CameraBits", kSecondEntry + 3, "\xF1", true, "12.50"},
    {"FlagsBits", kSecondEntry, std::string(1, '\0'), true, "12.50"},
};

INSTANTIATE_TEST_SUITE_P(All, DamagedImage, ::testing::ValuesIn(kDamages),
                         [](const auto& test) { return test.param.name; });

TEST(SaveChosenCameras, SkipsImagesThatLeaveTheirBlock) {
  using namespace std::string_view_literals;
  // Sector numbers of 16 bits reach far beyond a block. The last one lets an image end in the
  // trailer, right at the block's end. Each costs two images: one ends where the next begins.
  for (const auto sectors :
       {"\xFF\xFF"sv, "\x10\x01"sv, "\x00\x01"sv, "\x0F\xFE\0\0\0\x10\x02"sv}) {
    RecordingBuilder builder = SampleRecording(0x00, 1);
    std::string recording = builder.Bytes();
    recording.replace(builder.TrailerOffset() + 288 + 5 * 10 + 2, sectors.size(), sectors);
    SaveOfCameras save(0x00, recording);
    EXPECT_EQ(save.Run(1, 1, 0xFFFF), SaveEnd::kSaved);
    EXPECT_EQ(save.Saved().size(), kImagesPerBlock - 2u);
    EXPECT_EQ(save.result.lostImages, 2);
  }
}

/// The last images of a block whose list says a wrong count, or a wrong end.
TEST(SaveChosenCameras, TakesTheEndOfAFullBlockAtItsWordOnly) {
  const tools::Image small = {.bytes = Picture(400), .title = "DOOR"};
  const tools::Image big = {.bytes = Picture(4092 * 512 - 56 - 1), .title = "DOOR"};
  struct Case {
    const char* what;
    tools::Image last;
    int count;
    std::string end;
    std::size_t kept;
    std::int64_t lost;
  };
  using namespace std::string_literals;
  const Case cases[] = {
      {"as recorders write it", big, 2, "\x10\x00"s, 2, 0},
      {"a count too large", big, 3, "\x10\x00"s, 2, 1},
      {"a count one too large, in a block that is not full", small, 3, "\x00\x04"s, 2, 1},
      {"an end of 0", big, 2, "\x00\x00"s, 1, 1},
      {"an end of 0 with bits of flags", big, 2, "\x20\x00"s, 1, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    RecordingBuilder builder(0x30);
    std::string recording = builder.Block().Image(small).Image(c.last).Bytes();
    const auto trailer = static_cast<std::size_t>(builder.TrailerOffset());
    recording[trailer + 33] = static_cast<char>(c.count);
    recording.replace(trailer + 36 + 8, 2, c.end);
    SaveOfCameras save(0x30, recording);
    EXPECT_EQ(save.Run(1, 1, 1), SaveEnd::kSaved);
    EXPECT_EQ(save.Saved().size(), c.kept);
    EXPECT_EQ(save.result.lostImages, c.lost);
  }
}

TEST(SaveChosenCameras, CountsAnImageThatNoBlockTakes) {
  const tools::Image whole = {.bytes = Picture(4094 * 512), .tail = false};
  const tools::Image small = {.bytes = Picture(10), .title = "DOOR"};
  SaveOfCameras save(0x10,
                     RecordingBuilder(0x10).Block().Image(whole).Block().Image(small).Bytes());
  EXPECT_EQ(save.Run(1, 2, 1), SaveEnd::kSaved);
  EXPECT_THAT(save.Saved(), ElementsAre(small));
  EXPECT_EQ(save.result.lostImages, 1);

  EXPECT_EQ(save.Run(1, 1, 1), SaveEnd::kNoImages);
  EXPECT_THAT(save.Saved(), ElementsAre(small)) << "the old target stays";
}

TEST(SaveChosenCameras, CountsBlocksWithoutAList) {
  RecordingBuilder builder = SampleRecording(0x30, 4);
  std::string recording = builder.Bytes();
  const auto type = static_cast<std::size_t>(builder.TrailerOffset()) + 13;
  const auto video = static_cast<std::size_t>(builder.TrailerOffset()) + 34;
  for (const std::size_t block : {1, 2}) {
    recording[block * kBlock + type] = '\x60';
    recording[block * kBlock + video] ^= '\x80';
  }
  SaveOfCameras save(0x30, recording);
  EXPECT_EQ(save.Run(1, 2, 2), SaveEnd::kSaved);
  EXPECT_EQ(MessageOfLosses(save.result), "The recording is damaged: 1 block could not be kept.");
  EXPECT_THAT(save.Saved(), ElementsAreArray(KeptSamples(0x30, 1, 1, 2)));
  const auto standard = [&] {
    return ReadRecording(save.world.disk.View(kTarget), false).at(0).Field(34, 2);
  };
  const auto standardOfFirst = standard();
  EXPECT_EQ(save.Run(1, 4, 2), SaveEnd::kSaved);
  EXPECT_EQ(save.result.lostBlocks, 2);
  EXPECT_EQ(standard(), standardOfFirst);
}

TEST(SaveMessages, TellWhatDamageHasCost) {
  const auto text = [](std::int64_t images, std::int64_t blocks) {
    return MessageOfLosses({.lostImages = images, .lostBlocks = blocks});
  };
  EXPECT_EQ(text(0, 0), "");
  EXPECT_EQ(text(1, 0), "The recording is damaged: 1 image could not be kept.");
  EXPECT_EQ(text(0, 3), "The recording is damaged: 3 blocks could not be kept.");
  EXPECT_EQ(text(12, 1), "The recording is damaged: 12 images and 1 block could not be kept.");
}

TEST(SaveChosenCameras, BreathesInTheIndexPassAndCanBeCancelledThere) {
  constexpr int kBlocks = 200;
  SaveOfCameras save(0x30, std::string(kBlocks * kBlock, '\0'));
  int breaths = 0;
  save.progress.onMessages = [&] {
    ++breaths;
    if (breaths == 2) save.progress.cancelBefore = 1;
  };
  const int readsBefore = save.world.disk.Reads();
  EXPECT_EQ(save.Run(1, kBlocks, 1), SaveEnd::kCancelled);
  EXPECT_EQ(save.world.disk.Reads() - readsBefore, 128);
  EXPECT_EQ(save.world.disk.View(kTarget), "old");
  save.ExpectNothingLeft();
}

TEST(SaveChosenCameras, RefusesWhatHasNoImagesAndWhatIsNoRecording) {
  SaveOfCameras save(0x30, SampleRecording(0x30, 2).Bytes());
  mdlFileProcessing::bytBlockStatus = 0x50;
  EXPECT_EQ(save.Run(1, 2, 1), SaveEnd::kNotValid);
  save.ExpectOneRefusal("This file is not a valid source file!");
  EXPECT_EQ(save.world.disk.View(kTarget), "old");

  mdlFileProcessing::bytBlockStatus = 0x30;
  save.progress = {};
  EXPECT_EQ(save.Run(1, 2, 0x8000), SaveEnd::kNoImages);
  save.ExpectOneRefusal("The selected cameras have no images in the selected time range!");
  EXPECT_EQ(save.world.disk.View(kTarget), "old");
  save.ExpectNothingLeft();
}

}  // namespace
