// Drives the writer with arbitrary sequences of images and reads its file back, image by image.

#include <fuzzer/FuzzedDataProvider.h>

#include <string_view>
#include <vector>

#include "attacks/fuzz/check.h"
#include "capture/clsCreate60D.h"
#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "platform/runtime_error.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_reader.h"

namespace {

constexpr char kTarget[] = "C:\\new.60D";

/// Sizes around the places where a sector, a block or a number ends.
std::int32_t SizeOf(FuzzedDataProvider& data) {
  switch (data.ConsumeIntegralInRange(0, 4)) {
    case 0:
      return data.ConsumeIntegralInRange<std::int32_t>(0, 2000);
    case 1:
      return 512 * data.ConsumeIntegralInRange<std::int32_t>(0, 4200) +
             data.ConsumeIntegralInRange<std::int32_t>(-60, 60);
    case 2:
      return data.ConsumeIntegralInRange<std::int32_t>(2090000, 2097500);
    case 3:
      return data.ConsumeIntegral<std::int32_t>();
    default:
      return 1;
  }
}

std::string TextOf(FuzzedDataProvider& data, int most) {
  const int length = data.ConsumeIntegralInRange(0, most);
  return std::string(static_cast<std::size_t>(length), data.ConsumeIntegralInRange<char>(1, 127));
}

/// An image as it is handed over; its bytes are a part of `Noise`, so that they cost no time.
struct Call {
  std::int32_t size;
  int soundSectors;
  std::size_t start = 0;  ///< In the noise.
  tools::Image image;     ///< The fields other than bytes and sound.
};

const std::string& Noise() {
  static const std::string noise = Picture(1 << 22, 7);
  return noise;
}

Call NextCall(FuzzedDataProvider& data) {
  Call call = {};
  call.size = SizeOf(data);
  call.soundSectors = data.ConsumeBool() ? data.ConsumeIntegralInRange(-1, 33) : 0;
  call.image.camera = data.ConsumeIntegralInRange(-1, 16);
  call.image.seconds = data.ConsumeIntegral<std::int32_t>();
  call.image.title = TextOf(data, 49);
  call.image.text = data.ConsumeBool() ? TextOf(data, 501) : "";
  call.image.flags = data.ConsumeIntegralInRange(-1, 5);
  return call;
}

bool MustTake(const Call& call) {
  return call.size >= 0 && call.size <= 2000000 && call.soundSectors >= 0 &&
         call.soundSectors <= 31 && call.image.camera >= 0 && call.image.camera <= 15 &&
         call.image.title.size() <= 48 && call.image.text.size() <= 500;
}

/// Whether the writer has taken the image.
bool Add(clsCreate60D& writer, const Call& call) {
  const auto* noise = reinterpret_cast<const std::uint8_t*>(Noise().data());
  const auto start = static_cast<std::int32_t>(call.start);
  try {
    writer.AddDataTo60DFile(noise, start, call.size, static_cast<std::int16_t>(call.image.flags),
                            call.image.title, call.image.text, call.image.seconds,
                            call.image.camera, call.soundSectors, noise + start);
    return true;
  } catch (const RuntimeError&) {
    Demand(!MustTake(call), "an image that fits is taken");
    return false;
  }
}

void DemandSame(const tools::Image& stored, const Call& given) {
  const int flags = given.image.flags;
  Demand(stored.camera == given.image.camera && stored.seconds == given.image.seconds &&
             stored.flags == (flags >= 1 && flags <= 3 ? flags : 0) &&
             stored.text == given.image.text,
         "fields come back");
  const std::string& title = given.image.title;
  Demand(stored.title.compare(0, title.size(), title) == 0, "the title comes back");
  const std::size_t sound = stored.sound.size();
  Demand(sound == static_cast<std::size_t>(given.soundSectors) * 512 &&
             Noise().compare(given.start, sound, stored.sound) == 0,
         "sound comes back");
  const auto size = static_cast<std::size_t>(given.size);
  Demand(stored.bytes.size() > size && stored.bytes.size() <= size + 512 &&
             stored.bytes.find_first_not_of('\0', size) == std::string::npos,
         "the image is padded with zeros");
  Demand(std::string_view(stored.bytes).substr(0, size) ==
             std::string_view(Noise()).substr(given.start, size),
         "the image comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  const bool is20D = data.ConsumeBool();
  mdlFileProcessing::bln20D = is20D;
  FakePlatform world;
  MemoryDisk& disk = world.disk;
  static std::string room;  // Kept from run to run: fresh pages are what a run would wait for.
  disk.Put(kTarget, std::move(room));
  NewFile file(world.system, NewFile::Place::kOwnName, [] { return true; });
  clsCreate60D writer(file);
  Demand(writer.Create60DFile(kTarget), "the file is created");
  std::vector<Call> given;
  constexpr std::uint64_t kTwoBlocks = 2ull * format::kBlockSize;
  const auto writes = [&] { return disk.FileBytes(kTarget).value_or(0) < kTwoBlocks; };
  while (data.remaining_bytes() > 0 && writes()) {
    Call call = NextCall(data);
    call.start = given.size();
    int copies = data.ConsumeIntegralInRange(0, 7) == 0 ? 300 : 1;
    for (; copies > 0 && writes() && Add(writer, call); --copies) {
      given.push_back(call);
      call.start = given.size();
    }
  }
  writer.Close60dFile();
  Demand(!writer.HasFailed() && disk.OpenHandles() == 0, "the file is closed and whole");
  std::size_t next = 0;
  for (const StoredBlock& block : ReadRecording(disk.View(kTarget), is20D))
    for (const tools::Image& image : block.images) DemandSame(image, given.at(next++));
  Demand(next == given.size(), "no image is missing");
  room = disk.Take(kTarget);
  return 0;
}
