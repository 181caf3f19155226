#include "capture/clsCreate60D.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "capture/mdlFileProcessing.h"
#include "platform/runtime_error.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_reader.h"

namespace {

using testing::Each;

/// A file that is being written, with the writer as the save operations use it.
class Target {
 public:
  explicit Target(bool is20D = false) : is20D_(is20D) {
    mdlFileProcessing::bln20D = is20D;
    created = writer.Create60DFile(kPath);
    mdlFileProcessing::bln20D = !is20D;  // The kind is taken when the file is created.
  }
  explicit Target(const Fault& fault) : is20D_(false) {
    mdlFileProcessing::bln20D = false;
    world.disk.fault = fault;
    created = writer.Create60DFile(kPath);
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
    return world.disk.Bytes(kPath).value_or("");
  }
  std::vector<StoredBlock> Blocks() { return ReadRecording(Bytes(), is20D_); }

 private:
  bool is20D_;

 public:
  static constexpr char kPath[] = "C:\\Trimbrook\\new.60D";
  FakePlatform world;
  NewFile file{world.system, NewFile::Place::kOwnName, [] { return true; }};
  clsCreate60D writer{file};
  bool created;
};

class Writer : public testing::TestWithParam<bool> {
 protected:
  bool is20D() const { return GetParam(); }
  std::size_t TrailerOffset() const { return is20D() ? 0x1FF400 : 0x1FFC00; }
  std::size_t TrailerLength() const { return is20D() ? 3072 : 1024; }
  std::uint32_t FirstSector() const { return is20D() ? 6 : 2; }
};

INSTANTIATE_TEST_SUITE_P(BothKinds, Writer, testing::Bool());

TEST_P(Writer, TailsTakeTheEndOfASector) {
  const std::pair<int, std::uint32_t> kSectors[] = {{0, 1},   {1, 1},   {455, 1}, {456, 2},
                                                    {457, 2}, {511, 2}, {512, 2}, {967, 2},
                                                    {968, 3}, {1000, 3}};
  for (const auto& [bytes, sectors] : kSectors) {
    Target target(is20D());
    target.Add({.bytes = Picture(bytes)});
    target.Add({});
    const StoredBlock block = target.Blocks().at(0);
    EXPECT_EQ(block.Field(36, 2), FirstSector());
    EXPECT_EQ(block.Field(40, 2), FirstSector() + sectors) << bytes;
    EXPECT_EQ(block.images[0].bytes,
              Picture(bytes) + std::string(512 * sectors - 56 - bytes, '\0'));
  }
}

TEST_P(Writer, FillsTheTrailer) {
  Target target(is20D());
  target.writer.SetVideoStandardToPAL(is20D());
  target.Add({.camera = 0, .seconds = 300, .flags = 2});
  target.Add({.camera = 3, .seconds = 100, .text = "receipt", .flags = 1});
  target.Add({.camera = 15, .seconds = 200, .sound = std::string(3 * 512, 's'), .flags = 3});
  target.Add({.camera = 4, .seconds = 250, .flags = 4});
  const StoredBlock block = target.Blocks().at(0);
  const struct {
    std::size_t offset, width;
    std::uint32_t value;
  } kFields[] = {
      {0, 4, 100},
      {4, 4, 100},
      {8, 4, 300},
      {12, 1, 36},
      {13, 1, is20D() ? 0x60u : 0x30u},
      {14, 4, 1},
      {18, 2, 0x8019},
      {20, 2, 0x0008},
      {22, 2, 0x8000},
      {24, 4, 0},
      {28, 2, 0x0001},
      {30, 2, 0x0008},
      {32, 2, 4},
      {34, 2, is20D() ? 0u : 0x8000u},
      {36, 4, 0x20000000 | FirstSector() << 16},
      {40, 4, 0x10000103 | (FirstSector() + 1) << 16},
      {44, 4, 0x3000180F | (FirstSector() + 3) << 16},
      {48, 4, 0x00000004 | (FirstSector() + 7) << 16},
      {52, 4, (FirstSector() + 8) << 16},
  };
  for (const auto& field : kFields)
    EXPECT_EQ(block.Field(field.offset, field.width), field.value) << "offset " << field.offset;
  EXPECT_THAT(block.trailer.substr(56), Each('\0'));
  EXPECT_EQ(block.images[1].seconds, 100) << "although an earlier image was later";
}

TEST_P(Writer, TitlesLeaveTheirEndsBehindUntilTheBlockChanges) {
  Target target(is20D());
  target.Add({.title = "CAMERA 10"});
  target.Add({.title = "CAM 2"});
  target.Add({.bytes = Picture(2000000)});
  target.Add({.bytes = Picture(200000)});
  const auto images = ImagesOf(target.Bytes(), is20D());
  EXPECT_EQ(images[1].title, "CAM 2A 10");
  EXPECT_EQ(images[2].title, "CAM 2A 10");
  EXPECT_EQ(images[3].title, "");
}

TEST_P(Writer, BeginsABlockAfterItsMostImagesAndClosesCompactly) {
  const std::size_t most = is20D() ? 758 : 246;
  Target target(is20D());
  for (std::size_t i = 0; i <= most; ++i) {
    EXPECT_EQ(target.writer.GetCurrentFileSize(), 0);
    target.Add({.seconds = 1, .bytes = Picture(10, static_cast<int>(i))});
  }
  EXPECT_EQ(target.writer.GetCurrentFileSize(), 2097152);
  const std::string bytes = target.Bytes();
  EXPECT_EQ(bytes.size(), 2097152 + 512 + TrailerLength());
  EXPECT_EQ(target.writer.GetCurrentFileSize(), bytes.size());
  const auto blocks = ReadRecording(bytes, is20D());
  EXPECT_EQ(blocks.at(0).images.size(), most);
  EXPECT_EQ(blocks.at(0).Field(14, 4), 1u);
  EXPECT_EQ(blocks.at(1).Field(14, 4), 2u);
  const std::size_t data = blocks.at(0).dataBytes;
  EXPECT_EQ(bytes.find_first_not_of('\0', data), TrailerOffset() + 3);  // The stamp's last byte.
}

// Room is kept for the rest of a sector, a tail and a text, whether they are needed or not.
TEST_P(Writer, BeginsABlockWhenTheReserveIsTouched) {
  const int room = static_cast<int>(TrailerOffset()) - 512 - 2048;
  for (const auto& [bytes, blocks] : {std::pair(room - 1, 1u), {room, 2u}}) {
    Target target(is20D());
    target.Add({});
    target.Add({.bytes = Picture(bytes), .text = "text"});
    EXPECT_EQ(target.Blocks().size(), blocks) << bytes;
  }
}

TEST_P(Writer, TakesImagesUpToAWholeBlockAndRefusesGreaterOnes) {
  const int whole = static_cast<int>(TrailerOffset()) - 57;
  for (const int without : {0, 2, 32}) {  // Sectors of text and sound.
    const std::string text = without > 0 ? "t" : "";
    const std::string sound(512 * (without > 0 ? without - 1 : 0), 's');
    const int fits = whole - 512 * without;
    Target target(is20D());
    target.Add({.bytes = "small"});
    EXPECT_THROW(target.Add({.bytes = Picture(fits + 1), .text = text, .sound = sound}),
                 RuntimeError);
    EXPECT_EQ(target.writer.GetCurrentFileSize(), 0) << "the block before is still open";
    target.Add({.bytes = Picture(fits), .text = text, .sound = sound});
    const auto blocks = target.Blocks();
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_TRUE(blocks[1].images.at(0).bytes == Picture(fits) + '\0');
    EXPECT_EQ(blocks[1].dataBytes, TrailerOffset());
  }
}

TEST_P(Writer, ARefusedImageChangesNothing) {
  const tools::Image first = {.camera = 1, .seconds = 5, .title = "FIRST"};
  Target expected(is20D());
  expected.Add(first);
  expected.Add(first);

  Target target(is20D());
  target.Add(first);
  const std::uint8_t byte[512] = {};
  const auto refused = [&](std::int32_t start, std::int32_t size, const std::string& title,
                           const std::string& text, std::int32_t camera, std::int32_t sound) {
    EXPECT_THROW(
        target.writer.AddDataTo60DFile(byte, start, size, 1, title, text, 1, camera, sound, byte),
        RuntimeError);
  };
  refused(-1, 1, "", "", 0, 0);
  refused(0, -1, "", "", 0, 0);
  refused(0, INT32_MIN, "", "", 0, 0);
  refused(0, INT32_MAX, "", "", 0, 0);
  refused(0, 1, std::string(49, 't'), "", 0, 0);
  refused(0, 1, "", std::string(501, 't'), 0, 0);
  refused(0, 1, "", "", 16, 0);
  refused(0, 1, "", "", -1, 0);
  refused(0, 1, "", "", 0, 32);
  refused(0, 1, "", "", 0, -1);
  target.Add(first);
  EXPECT_TRUE(target.Bytes() == expected.Bytes());
}

TEST(WriterOnADisk, WithoutImagesLeavesAnEmptyFile) {
  Target target;
  EXPECT_TRUE(target.writer.FileIsReady());
  EXPECT_EQ(target.Bytes(), "");
  EXPECT_FALSE(target.writer.FileIsReady());
  target.Add({});  // Not ready any more: nothing happens.
  EXPECT_EQ(target.Bytes(), "");
}

TEST(WriterOnADisk, TellsItWhateverCallFails) {
  const auto write = [](Target& target) {
    for (int i = 0; i < 3; ++i) target.Add({.bytes = Picture(1500000, i)});
    target.writer.Close60dFile();
    return !target.writer.HasFailed();
  };
  Target good;
  ASSERT_TRUE(write(good));
  ForEachFault([&](Fault& fault) {
    Target target(fault);
    const bool written = write(target);
    fault = std::exchange(target.world.disk.fault, {});
    if (target.created && written)
      EXPECT_TRUE(target.world.disk.View(Target::kPath) == good.world.disk.View(Target::kPath))
          << fault;
  });
}

}  // namespace
