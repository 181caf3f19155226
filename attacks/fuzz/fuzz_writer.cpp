// Drives the writer with any sequence of images and reads its file back: what a block can hold
// comes back as it was, and whatever is refused changes nothing.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

#include "capture/clsCreate60D.h"
#include "capture/mdlFileProcessing.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"

namespace {

constexpr char kTarget[] = "C:\\Trimbrook\\new.60D";

/// The most bytes for which an empty block has room beside the image's text and sound.
int MostBytes(const tools::Layout& layout, const tools::Image& image) {
  const int text = image.text.empty() ? 0 : tools::kSectorBytes;
  return layout.trailer - tools::kTailBytes - 1 - text - static_cast<int>(image.sound.size());
}

int SizeOf(FuzzedDataProvider& data, const tools::Layout& layout, int most) {
  constexpr int kSector = tools::kSectorBytes;
  switch (data.ConsumeIntegralInRange(0, 3)) {
    case 0:
      return most + data.ConsumeIntegralInRange(-1, 1);
    case 1:  // Where a block that holds another image already may have no room.
      return most - kSector * data.ConsumeIntegralInRange(0, 8);
    case 2:
      return data.ConsumeIntegralInRange(0, layout.trailer);
    default:  // Where a tail just fits into the last sector.
      return kSector * data.ConsumeIntegralInRange(0, 3) + data.PickValueInArray({0, 1, 455, 456});
  }
}

tools::Image NextImage(FuzzedDataProvider& data, const tools::Layout& layout, std::size_t number) {
  tools::Image image;
  image.camera = data.ConsumeIntegralInRange(-1, 16);
  image.seconds = data.ConsumeIntegral<std::int32_t>();
  image.flags = data.ConsumeIntegralInRange(-1, 4);
  image.title = std::string(data.PickValueInArray({0, 5, tools::kTailTitleBytes, 49}), 'T');
  image.text = std::string(data.PickValueInArray({0, 1, tools::kTextBytes, 501}), 't');
  const int sound = data.PickValueInArray({0, 0, 0, 511, 512, 31 * 512, 32 * 512});
  image.sound = Picture(sound);
  const int size = SizeOf(data, layout, MostBytes(layout, image));
  static const std::string noise = Picture(kBlock + 1000);
  // The last byte is none of a padding's.
  image.bytes = size > 0 ? noise.substr(number % 1000, size - 1) + '!' : "";
  return image;
}

bool IsFit(const tools::Layout& layout, const tools::Image& image) {
  return static_cast<int>(image.bytes.size()) <= MostBytes(layout, image) && image.camera >= 0 &&
         image.camera < 16 && image.sound.size() % tools::kSectorBytes == 0 &&
         image.sound.size() < 32 * tools::kSectorBytes &&
         image.title.size() <= tools::kTailTitleBytes && image.text.size() <= tools::kTextBytes;
}

/// Whether the writer has taken the image.
bool Add(clsCreate60D& writer, const tools::Image& image) {
  return writer.AddDataTo60DFile({.bytes = BytesOf(image.bytes),
                                  .flags = image.flags,
                                  .title = image.title,
                                  .text = image.text,
                                  .seconds = image.seconds,
                                  .camera = image.camera,
                                  .sound = BytesOf(image.sound)});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  const bool is20D = mdlFileProcessing::bln20D = data.ConsumeBool();
  const tools::Layout& layout = tools::FormOf(is20D);
  FakePlatform world;
  static std::string room;  // Kept from run to run: fresh pages are what a run would wait for.
  world.disk.Put(kTarget, std::move(room));
  NewFile file(world.system, NewFile::Place::kOwnName, [] { return true; });
  clsCreate60D writer(file);
  Demand(writer.Create60DFile(kTarget), "the file is created");
  std::vector<tools::Image> given;
  while (data.remaining_bytes() > 0 && writer.GetCurrentFileSize() < 2 * kBlock) {
    const tools::Image image = NextImage(data, layout, given.size());
    const bool isTaken = Add(writer, image);
    Demand(isTaken == IsFit(layout, image), "what fits is taken, and nothing else");
    if (isTaken) given.push_back(image);
  }
  const bool isWhole = writer.Close60dFile();
  Demand(isWhole && world.disk.OpenHandles() == 0, "the file is closed and whole");
  const auto stored = ImagesOf(world.disk.View(kTarget), is20D);
  Demand(stored.size() == given.size(), "no image is missing");
  for (std::size_t i = 0; i < stored.size(); ++i) {
    tools::Image& image = given[i];
    if (image.flags < 0 || image.flags > 3) image.flags = 0;
    Demand(stored[i] == image, "an image comes back");
  }
  room = world.disk.Take(kTarget);
  return 0;
}
