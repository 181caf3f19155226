// The writer's limits. What it writes inside them, the scripts compare that save real files.

#include "capture/clsCreate60D.h"

#include <gtest/gtest.h>

#include "capture/mdlFileProcessing.h"
#include "platform/runtime_error.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"

namespace {

constexpr char kPath[] = "C:\\Trimbrook\\new.60D";

/// The writer as the save operations use it, with a file that is being written.
struct Target {
  explicit Target(bool is20D) : is20D_(is20D) {
    mdlFileProcessing::bln20D = is20D;
    EXPECT_TRUE(writer.Create60DFile(kPath));
    mdlFileProcessing::bln20D = !is20D;  // The kind is taken when the file is created.
  }

  void Add(const tools::Image& image) {
    // The image lies inside a greater buffer, so that a byte too much is seen.
    const std::string buffer = "<" + image.bytes + ">";
    writer.AddDataTo60DFile(reinterpret_cast<const std::uint8_t*>(buffer.data()), 1,
                            static_cast<std::int32_t>(image.bytes.size()),
                            static_cast<std::int16_t>(image.flags), image.title, image.text,
                            image.seconds, image.camera,
                            static_cast<std::int32_t>(image.sound.size()) / 512,
                            reinterpret_cast<const std::uint8_t*>(image.sound.data()));
  }
  std::string Bytes() {
    writer.Close60dFile();
    return world.disk.Bytes(kPath).value_or("none");
  }
  std::vector<tools::StoredBlock> Blocks() { return BlocksOf(Bytes(), is20D_); }

  bool is20D_;
  FakePlatform world;
  NewFile file{world.system, NewFile::Place::kOwnName, [] { return true; }};
  clsCreate60D writer{file};
};

class Writer : public testing::TestWithParam<bool> {
 protected:
  const tools::Layout& layout = LayoutOf(GetParam() ? 0x60 : 0x30);
};

INSTANTIATE_TEST_SUITE_P(BothKinds, Writer, testing::Bool());

TEST_P(Writer, BeginsABlockAfterItsMostImagesAndClosesCompactly) {
  Target target(GetParam());
  target.Add({.seconds = 9, .title = "DOOR 2", .text = "text", .flags = 1});
  for (int i = 1; i <= layout.mostImages; ++i) {
    EXPECT_EQ(target.writer.GetCurrentFileSize(), 0);
    target.Add({.seconds = 1, .bytes = Picture(10, i), .title = "DOOR"});
  }
  target.Add({});
  EXPECT_EQ(target.writer.GetCurrentFileSize(), 2097152);
  const std::string bytes = target.Bytes();
  EXPECT_EQ(bytes.size(), 2097152 + 1024 + layout.trailerBytes);
  EXPECT_EQ(target.writer.GetCurrentFileSize(), bytes.size());
  const auto blocks = BlocksOf(bytes, GetParam());
  EXPECT_EQ(blocks.at(0).listedCount, layout.mostImages);
  EXPECT_EQ(blocks.at(1).images.at(1).title, "DOOR") << "left behind by the image before";
  // The second block's latest stamp, camera mask, mask of flags 1 and text mask are its own.
  const std::uint8_t* trailer = blocks.at(1).Trailer();
  EXPECT_EQ(tools::Get(trailer + 8, 4), 1u);
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
    const auto written = target.Blocks();
    EXPECT_EQ(written.size(), blocks) << bytes;
    EXPECT_EQ(written.back().images.back().title, blocks == 1 ? "FIRST" : "");
  }
}

TEST_P(Writer, TakesImagesUpToAWholeBlockAndRefusesGreaterOnes) {
  for (const int without : {0, 2, 32}) {  // Sectors of text and sound.
    const std::string text = without > 0 ? "t" : "";
    const std::string sound(512 * (without > 0 ? without - 1 : 0), 's');
    const int fits = layout.trailer - 57 - 512 * without;
    Target target(GetParam());
    target.Add({.bytes = "small"});
    EXPECT_THROW(target.Add({.bytes = Picture(fits + 1), .text = text, .sound = sound}),
                 RuntimeError);
    EXPECT_EQ(target.writer.GetCurrentFileSize(), 0) << "the block before is still open";
    target.Add({.bytes = Picture(fits), .text = text, .sound = sound});
    const auto blocks = target.Blocks();
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[1].images.at(0).end, layout.trailer);
    EXPECT_EQ(ImagesOf(target.Bytes(), GetParam()).at(1).bytes, Picture(fits));
  }
}

TEST_P(Writer, ARefusedImageChangesNothing) {
  const struct {
    std::int32_t start, size;
    std::size_t title, text;
    std::int32_t camera, sound;
  } kRefused[] = {
      {-1, 1, 0, 0, 0, 0},        {0, -1, 0, 0, 0, 0}, {0, INT32_MIN, 0, 0, 0, 0},
      {0, INT32_MAX, 0, 0, 0, 0}, {0, 1, 49, 0, 0, 0}, {0, 1, 0, 501, 0, 0},
      {0, 1, 0, 0, 16, 0},        {0, 1, 0, 0, -1, 0}, {0, 1, 0, 0, 0, 32},
      {0, 1, 0, 0, 0, -1},
  };
  tools::Image taken = {.camera = 1,
                        .seconds = 5,
                        .title = std::string(48, 't'),
                        .text = std::string(500, 'x'),
                        .flags = 4};
  const std::uint8_t bytes[512] = {};
  Target target(GetParam());
  target.Add(taken);
  for (const auto& image : kRefused)
    EXPECT_THROW(target.writer.AddDataTo60DFile(
                     bytes, image.start, image.size, 1, std::string(image.title, 't'),
                     std::string(image.text, 't'), 1, image.camera, image.sound, bytes),
                 RuntimeError);
  target.Add(taken);
  taken.flags = 0;  // More than two bits are none.
  EXPECT_EQ(ImagesOf(target.Bytes(), GetParam()), std::vector({taken, taken}));
}

TEST_P(Writer, WithoutImagesLeavesAnEmptyFile) {
  Target target(GetParam());
  EXPECT_TRUE(target.writer.FileIsReady());
  EXPECT_EQ(target.Bytes(), "");
  EXPECT_FALSE(target.writer.FileIsReady());
  target.Add({});  // Not ready any more: nothing happens.
  EXPECT_EQ(target.Bytes(), "");
}

}  // namespace
