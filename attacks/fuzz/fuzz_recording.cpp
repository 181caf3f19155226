// Scan, availability, camera index and saves of chosen cameras over hostile recordings of every
// block type. A save of whole blocks looks at no byte of theirs.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

#include "capture/mdlFileProcessing.h"
#include "save/operations.h"
#include "tests/save/fake_progress.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recordings.h"
#include "tools/comparison.h"
#include "tools/damage.h"

using tools::kSectorBytes;
using tools::kTailBytes;

namespace {

constexpr char kSource[] = "C:\\Recordings\\source.60D";
constexpr char kTarget[] = "C:\\Recordings\\target.60D";

constexpr int kMostBlocks = 3;

tools::BlockBuilder& Builder() {
  static tools::BlockStyle style = {.tight = true};
  style.titles.fill("Table");
  static tools::BlockBuilder builder(style);
  return builder;
}

/// Bytes that do not end in what could be padding.
std::string Noise(std::size_t start, int count) {
  static const std::string noise = Picture(kBlock + 1000);
  std::string bytes = noise.substr(start, static_cast<std::size_t>(std::max(count, 1)));
  bytes.back() = '!';
  return bytes;
}

tools::Image NextImage(FuzzedDataProvider& data, const tools::Layout& layout, std::int32_t start,
                       std::size_t number, int& large) {
  tools::Image image;
  image.camera = data.ConsumeIntegralInRange(0, layout.cameras - 1);
  image.seconds = layout.entryTime != tools::kNone ? start + data.ConsumeIntegralInRange(0, 65535)
                                                   : data.ConsumeIntegral<std::int32_t>();
  image.flags = data.ConsumeIntegralInRange(0, 3);
  image.tail = layout.isOfToday || data.ConsumeBool();
  if (image.tail)
    image.title = std::string(data.PickValueInArray({1, 5, 16}), data.PickValueInArray({'A', 'B'}));
  int parts = 0;  // Sectors of text and sound.
  if (layout.entryParts != tools::kNone) {
    image.text = std::string(data.PickValueInArray({0, 0, 0, 1, tools::kTextBytes}), 't');
    const int sound = data.PickValueInArray({0, 0, 0, 1, 31});
    if (sound > 0) image.sound = Noise(1, sound * kSectorBytes);
    parts = (image.text.empty() ? 0 : 1) + sound;
  }
  int sectors = data.ConsumeIntegralInRange(1, 4);
  // Up to the trailer, or of any size. Two in a recording, which need not fit one new block, tell
  // all, and take the time of hundreds of small ones; bytes that are not there, which read as 0,
  // make none.
  if (large > 0 && data.ConsumeIntegralInRange(0, 15) >= 14) {
    --large;
    const int all = std::max(1, Builder().FreeSectors() - parts);
    sectors = image.tail && data.ConsumeBool() ? all : data.ConsumeIntegralInRange(1, 2000);
  }
  // Up to the tail, or short of it by as much as a recorder ever pads.
  const int free = image.tail ? kTailBytes + data.PickValueInArray({0, 1, 56, 455}) : 0;
  image.bytes = Noise(number % 1000, sectors * kSectorBytes - free);
  return image;
}

/// A recording that a fuzzer's bytes describe, its blocks of whatever types: sound enough that a
/// reader gets deep into it, then damaged at some places, or at none.
class HostileRecording {
 public:
  HostileRecording(FuzzedDataProvider& data, std::string&& room)
      : is20D(data.ConsumeIntegralInRange(0, 3) == 0), bytes(std::move(room)) {
    bytes.clear();
    const int count = data.ConsumeIntegralInRange(1, kMostBlocks);
    int large = data.ConsumeIntegralInRange(0, 7) == 7 ? 2 : 0;
    while (Blocks() < count) AddBlock(data, large);
    isSound = data.ConsumeBool();
    if (!isSound) Damage(data);
  }

  int Blocks() const { return static_cast<int>(layouts_.size()); }

  /// Ends the recording as a rebuilt one ends: the last block's trailer follows its images.
  void Shorten() {
    if (!endsWell || lastData_ == 0 || bytes.size() != layouts_.size() * kBlock) return;
    const auto trailer = static_cast<std::size_t>(layouts_.back()->trailer);
    bytes.erase(bytes.size() - kBlock + lastData_, trailer - lastData_);
  }

  bool is20D;
  bool isSound;          ///< Nothing is damaged, but for blocks of no type.
  bool endsWell = true;  ///< The last block has a type of its kind.
  std::string bytes;

 private:
  void AddBlock(FuzzedDataProvider& data, int& large) {
    const int type = is20D ? 0x60 : data.PickValueInArray({0x30, 0x20, 0x10, 0x00});
    const tools::Layout& layout = LayoutOf(type);
    layouts_.push_back(&layout);
    // What is of no type is damaged, whatever it holds.
    const bool isJunk = data.ConsumeIntegralInRange(0, 15) == 0;
    endsWell = !isJunk;
    tools::BlockBuilder& builder = Builder();
    builder.Begin(layout, 1);
    const auto start = data.ConsumeIntegralInRange<std::int32_t>(-70000, 0x7FFE0000);
    builder.SetTimes(start, data.ConsumeIntegral<std::int32_t>());
    int count = data.ConsumeIntegralInRange(0, 7);
    if (count == 7) count = data.ConsumeIntegralInRange(0, layout.mostImages);
    for (; builder.ImageCount() < count && data.remaining_bytes() > 0;) {
      const tools::Image image = NextImage(data, layout, start, images_++, large);
      if (!builder.Fits(image)) break;
      builder.Add(image);
    }
    lastData_ = static_cast<std::size_t>(layout.trailer - builder.FreeSectors() * kSectorBytes);
    const tools::Bytes& block = builder.Finish();
    bytes.append(reinterpret_cast<const char*>(block.data()), block.size());
    if (isJunk)
      bytes[bytes.size() - kBlock + layout.trailer + tools::kType] =
          data.PickValueInArray({'\x01', '\x40', '\xFF'});
  }

  void DamageBlock(FuzzedDataProvider& data, std::size_t block) {
    const tools::Layout& layout = *layouts_[block];
    auto* begin = reinterpret_cast<std::uint8_t*>(bytes.data() + block * kBlock);
    const auto& kinds = tools::DamageKinds();
    const auto kind = data.ConsumeIntegralInRange<std::size_t>(0, 2 * kinds.size());
    if (kind < kinds.size()) {
      tools::Random random(data.ConsumeIntegral<std::uint8_t>());
      tools::Victim victim = {layout, begin, random};
      return kinds[kind].apply(victim);
    }
    // Some bytes of the trailer's header and its first entries, or of what lies at the edges of a
    // sector: tails and texts.
    const int place = data.ConsumeBool()
                          ? layout.trailer + data.ConsumeIntegralInRange(0, 2 * layout.list)
                          : data.ConsumeIntegralInRange(0, 255) * kSectorBytes +
                                data.PickValueInArray({0, 4, 8, 456, 460, 464});
    const std::string junk =
        data.ConsumeBytesAsString(data.ConsumeIntegralInRange<std::size_t>(1, 4));
    std::copy(junk.begin(), junk.end(), begin + place);
  }

  void Damage(FuzzedDataProvider& data) {
    for (int n = data.ConsumeIntegralInRange(1, 8); n > 0; --n)
      DamageBlock(data, data.ConsumeIntegralInRange<std::size_t>(0, layouts_.size() - 1));
    if (data.ConsumeBool()) bytes.resize(data.ConsumeIntegralInRange<std::size_t>(0, bytes.size()));
  }

  std::vector<const tools::Layout*> layouts_;  ///< Of the blocks.
  std::size_t lastData_ = 0;                   ///< Bytes of the last block's images.
  std::size_t images_ = 0;
};

/// The image as a save keeps it, in the tools' eyes; nothing when it is damaged or no block takes
/// it.
std::optional<tools::Image> KeptOf(const tools::StoredBlock& block,
                                   const tools::StoredImage& image) {
  static const tools::BlockStyle style;
  static tools::BlockBuilder room(style);
  room.Begin(tools::FormOf(block.layout->is20D), 1);
  if (!image.trouble.empty()) return {};
  tools::Image kept = tools::Saved(block, image);
  if (!room.Fits(kept)) return {};
  kept.bytes.erase(kept.bytes.find_last_not_of('\0') + 1);
  return kept;
}

/// One run: what is asked of the program, and what it must not do.
struct Run {
  Run(FuzzedDataProvider& data, std::string&& room) : recording(data, std::move(room)) {
    job.firstBlock = data.ConsumeIntegralInRange(-1, 4);
    job.lastBlock = job.firstBlock + data.ConsumeIntegralInRange(-1, 3);
    job.cameras = data.ConsumeIntegral<std::uint16_t>();
    world.dates.style = static_cast<FakeDates::Style>(data.ConsumeIntegralInRange(0, 2));
    if (data.ConsumeBool()) disk.Put(kTarget, "old");
    if (data.ConsumeBool()) recording.Shorten();
    // Of images that overlap each other a save makes a file of any size.
    disk.largest = {{"C:", 12 * kBlock}};
    size = recording.bytes.size();
    disk.Put(kSource, std::move(recording.bytes));
  }

  void Scan() {
    mdlFileProcessing::bytBlockStatus = 0;
    mdlFileProcessing::bln20D = recording.is20D;
    const auto end = mdlFileProcessing::ScanSourceFile(disk, kSource).end;
    if (recording.isSound)
      Demand((end == mdlFileProcessing::ReadEnd::kDone) == recording.endsWell &&
                 mdlFileProcessing::lngBlockCount == recording.Blocks(),
             "the scan is right");
    mdlFileProcessing::CheckAvailability(disk, kSource, job.firstBlock, job.lastBlock);
  }

  void Save() {
    const SaveResult result = RunSave(world.system, progress, job);
    Demand(result.end != SaveEnd::kFault, "nothing happens that no one foresaw");
    if (result.end == SaveEnd::kSaved)
      DemandImages(result, ImagesOf(disk.View(kTarget), recording.is20D));
    else
      Demand(disk.Bytes(kTarget).value_or("old") == "old", "no half file is left");
    if (result.end == SaveEnd::kNoImages) DemandImages(result, {});
  }

  /// What is damaged is judged, too, unless a part of the last block is gone.
  void DemandImages(const SaveResult& result, const std::vector<tools::Image>& stored) const {
    if (!recording.isSound && size % kBlock != 0) return;
    auto next = stored.begin();
    std::int64_t lost = 0;
    for (int number = job.firstBlock; number <= job.lastBlock; ++number) {
      const auto bytes = disk.View(kSource).substr((number - 1) * kBlock, kBlock);
      static tools::StoredBlock block;
      block = BlockOf(bytes, recording.is20D, std::move(block.bytes));
      for (const tools::StoredImage& image : block.images) {
        if (image.camera >= 16 || (job.cameras >> image.camera & 1) == 0) continue;
        const auto kept = KeptOf(block, image);
        Demand(!kept || (next != stored.end() && *next++ == kept), "an image is kept as it was");
        lost += kept ? 0 : 1;
      }
    }
    Demand(next == stored.end(), "no other image is kept");
    Demand(result.lostImages == lost, "what is lost is counted");
  }

  void DemandNothingLeft() const {
    Demand(disk.OpenHandles() == 0, "every handle is closed");
    Demand(disk.View(kSource).size() == size, "the source is left alone");
    Demand(disk.files.size() == (disk.At(kTarget) ? 3 : 2), "no temporary file is left");
  }

  HostileRecording recording;
  FakePlatform world;
  MemoryDisk& disk = world.disk;
  FakeProgress progress;
  SaveJob job = {
      .sourcePath = kSource, .targetPath = kTarget, .mode = SaveJob::Mode::kChosenCameras};
  std::size_t size = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  static std::string room;  // Kept from run to run: fresh pages are what a run would wait for.
  Run run(data, std::move(room));
  run.Scan();
  if (const int count = mdlFileProcessing::lngBlockCount; count > 0) {
    // The sliders keep the range inside the source.
    run.job.firstBlock = std::clamp(run.job.firstBlock, 1, count);
    run.job.lastBlock = std::clamp(run.job.lastBlock, 0, count);
    run.Save();
  }
  run.DemandNothingLeft();
  room = run.disk.Take(kSource);
  return 0;
}
