// Which images the writer takes, and where it begins a block. That they come back the fuzzer shows.

#include "capture/clsCreate60D.h"

#include <gtest/gtest.h>

#include "capture/mdlFileProcessing.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"

namespace {

constexpr char kPath[] = "C:\\Trimbrook\\new.60D";

/// The writer as the save operations use it, with a file that is being written.
struct Target {
  explicit Target(bool is20D) {
    mdlFileProcessing::bln20D = is20D;
    EXPECT_TRUE(writer.Create60DFile(kPath));
    mdlFileProcessing::bln20D = !is20D;  // The kind is taken when the file is created.
  }

  /// Whether the image was taken.
  bool Add(const tools::Image& image) {
    return writer.AddDataTo60DFile({.bytes = BytesOf(image.bytes),
                                    .flags = image.flags,
                                    .title = image.title,
                                    .text = image.text,
                                    .seconds = image.seconds,
                                    .camera = image.camera,
                                    .sound = BytesOf(image.sound)});
  }
  std::string Bytes() {
    writer.Close60dFile();
    return world.disk.Bytes(kPath).value_or("none");
  }

  FakePlatform world;
  NewFile file{world.system, NewFile::Place::kOwnName, [] { return true; }};
  clsCreate60D writer{file};
};

class Writer : public testing::TestWithParam<bool> {
 protected:
  const tools::Layout& layout = LayoutOf(GetParam() ? 0x60 : 0x30);
};

INSTANTIATE_TEST_SUITE_P(BothKinds, Writer, testing::Bool());

// Whatever its fields can hold, and a block beside its tail, its text and its sound. What is
// refused changes nothing.
TEST_P(Writer, TakesWhatABlockCanHold) {
  constexpr int kSound = 31 * tools::kSectorBytes;
  const int most = layout.trailer - tools::kTailBytes - 1;
  const auto withParts = [&](int size) {
    return tools::Image{.bytes = Picture(size), .text = "t", .sound = Picture(kSound)};
  };
  const int mostWithParts = most - tools::kSectorBytes - kSound;
  const std::pair<tools::Image, tools::Image> kLastAndTooMuch[] = {
      {{.camera = 15}, {.camera = 16}},
      {{.camera = 0}, {.camera = -1}},
      {{.title = std::string(48, 'T')}, {.title = std::string(49, 'T')}},
      {{.text = std::string(500, 't')}, {.text = std::string(501, 't')}},
      {{.sound = Picture(kSound)}, {.sound = Picture(kSound + tools::kSectorBytes)}},
      {{.sound = Picture(512)}, {.sound = Picture(511)}},
      {{.bytes = Picture(most)}, {.bytes = Picture(most + 1)}},
      {withParts(mostWithParts), withParts(mostWithParts + 1)}};
  Target target(GetParam());
  std::vector<tools::Image> taken;
  for (const auto& [last, tooMuch] : kLastAndTooMuch) {
    EXPECT_FALSE(target.Add(tooMuch)) << taken.size();
    EXPECT_TRUE(target.Add(taken.emplace_back(last))) << taken.size();
  }
  EXPECT_TRUE(ImagesOf(target.Bytes(), GetParam()) == taken);
}

TEST_P(Writer, BeginsABlockAfterItsMostImagesAndClosesCompactly) {
  Target target(GetParam());
  target.Add({.seconds = 9, .title = "DOOR 2", .text = "text", .flags = 1});
  for (int i = 1; i <= layout.mostImages; ++i) {
    EXPECT_EQ(target.writer.GetCurrentFileSize(), 0);
    target.Add({.seconds = 1, .bytes = Picture(10, i), .title = "DOOR"});
  }
  target.Add({.seconds = -1});
  EXPECT_EQ(target.writer.GetCurrentFileSize(), 2097152);
  const std::string bytes = target.Bytes();
  EXPECT_EQ(bytes.size(), 2097152 + 1024 + layout.trailerBytes);
  EXPECT_EQ(target.writer.GetCurrentFileSize(), bytes.size());
  const auto blocks = BlocksOf(bytes, GetParam());
  EXPECT_EQ(blocks.at(0).listedCount, layout.mostImages);
  EXPECT_EQ(blocks.at(1).images.at(1).title, "") << "nothing of the title before";
  // The second block's stamps, of which -1 is the latest there is, camera mask, mask of flags 1 and
  // text mask are its own.
  const std::uint8_t* trailer = blocks.at(1).Trailer();
  EXPECT_EQ(tools::Get(trailer, 4), 1u);
  EXPECT_EQ(tools::Get(trailer + 4, 4), 1u);
  EXPECT_EQ(tools::Get(trailer + 8, 4), 0xFFFFFFFFu);
  EXPECT_EQ(tools::Get(trailer + 18, 4), 0x00010000u);
  EXPECT_EQ(tools::Get(trailer + 30, 2), 0u);
  const auto data = static_cast<std::size_t>(blocks.at(0).images.back().end);
  EXPECT_EQ(bytes.find_first_not_of('\0', data), layout.trailer + 3);  // The stamp's last byte.
}

// Room is kept for the rest of a sector, a tail and a text, whether they are needed or not.
TEST_P(Writer, BeginsABlockWhenTheReserveIsTouched) {
  const int room = layout.trailer - 512 - 2048;
  for (const auto& [bytes, blocks] : {std::pair(room - 1, 1u), {room, 2u}}) {
    Target target(GetParam());
    target.Add({.title = "FIRST"});
    target.Add({.bytes = Picture(bytes), .text = "text"});
    const auto written = BlocksOf(target.Bytes(), GetParam());
    EXPECT_EQ(written.size(), blocks) << bytes;
  }
}

}  // namespace
