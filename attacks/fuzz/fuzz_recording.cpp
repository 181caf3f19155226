// Scan, availability, camera index and both saves over hostile recordings of every block type, with
// a fault of the disk or a cancel in between now and then.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

#include "attacks/fuzz/check.h"
#include "attacks/fuzz/hostile_recording.h"
#include "capture/mdlFileProcessing.h"
#include "save/operations.h"
#include "save/save_state.h"
#include "tests/save/fake_progress.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_reader.h"

namespace {

constexpr char kSource[] = "C:\\Recordings\\source.60D";
constexpr char kTarget[] = "C:\\Recordings\\target.60D";
constexpr std::size_t kBlock = 2097152;

/// One run: what is asked of the program, and what it must not do.
struct Run {
  explicit Run(FuzzedDataProvider& data) : recording(data) {
    world.disk.fault = FaultOf(data);
    first = data.ConsumeIntegralInRange(-1, 4);
    last = first + data.ConsumeIntegralInRange(-1, 3);
    mdlSave::lngCamSelLow = data.ConsumeIntegral<std::uint16_t>();
    progress.cancelBefore = data.ConsumeIntegralInRange(0, 15);
    world.dates.style = static_cast<FakeDates::Style>(data.ConsumeIntegralInRange(0, 3));
    size = recording.bytes.size();
    world.disk.Put(kSource, std::move(recording.bytes));
    if (data.ConsumeBool()) world.disk.Put(kTarget, "old");
  }
  ~Run() { recording.bytes = world.disk.Take(kSource); }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  static Fault FaultOf(FuzzedDataProvider& data) {
    Fault fault;
    if (data.ConsumeBool()) return fault;
    fault.call = data.ConsumeIntegralInRange(1, 100);
    fault.lasting = data.ConsumeBool();
    fault.kind = data.ConsumeBool() ? Fault::Kind::kError : Fault::Kind::kShortTransfer;
    return fault;
  }

  /// Whether nothing but the recording itself decides what a save gives.
  bool IsUndisturbed() const { return world.disk.fault.met.empty() && progress.messages.empty(); }

  /// Whether no file could be removed, so that one may be left.
  bool RemovalFails() const { return world.disk.fault.met == "remove" && world.disk.fault.lasting; }

  void DemandNoHalfFile() const {
    const auto target = world.disk.Bytes(kTarget);
    Demand(!target || target == "old" || RemovalFails(), "no half file is left");
  }

  void DemandNothingLeft() const {
    Demand(world.disk.OpenHandles() == 0, "every handle is closed");
    Demand(mdlFileProcessing::hSourceFile == platform::FileHandle::kInvalid, "no handle is kept");
    Demand(world.disk.View(kSource).size() == size, "the source is left alone");
    const bool temporary = world.disk.Paths().size() > (world.disk.Bytes(kTarget) ? 3 : 2);
    Demand(!temporary || RemovalFails(), "no temporary file is left");
  }

  HostileRecording recording;
  FakePlatform world;
  FakeProgress progress;
  int first = 0;
  int last = 0;
  std::size_t size = 0;
};

/// Whether a new block holds the image. One that fills its own down to the byte before its tail, or
/// without a tail, needs a sector more there.
bool FitsNewBlock(const HostileRecording::Given& given) {
  const tools::Image& image = given.image;
  const std::size_t sectors = (image.bytes.size() + tools::kTailBytes) / tools::kSectorBytes + 1 +
                              (image.text.empty() ? 0 : 1);
  const std::size_t sound = given.layout->type == 0x20 ? 0 : image.sound.size();
  return sectors * tools::kSectorBytes + sound <= static_cast<std::size_t>(given.layout->trailer);
}

std::vector<HostileRecording::Given> ChosenOf(const Run& run) {
  std::vector<HostileRecording::Given> chosen = run.recording.Images();
  std::erase_if(chosen, [&](const HostileRecording::Given& given) {
    return given.block < run.first || given.block > run.last || given.image.camera > 15 ||
           (mdlSave::lngCamSelLow >> given.image.camera & 1) == 0 || !FitsNewBlock(given);
  });
  return chosen;
}

void DemandSame(const tools::Image& stored, const HostileRecording::Given& given) {
  const tools::Image& image = given.image;
  const bool isType20 = given.layout->type == 0x20;
  Demand(stored.camera == image.camera && stored.flags == image.flags, "camera and flags are kept");
  // Blocks without tails and times in their list have none for an image.
  Demand(stored.seconds == image.seconds || (!image.tail && !isType20), "the stamp is kept");
  Demand(stored.text == image.text, "the text is kept");
  Demand(stored.sound == (isType20 ? "" : image.sound), "the sound is kept");
  // A longer title before it may leave its end behind.
  Demand(stored.title.starts_with(image.title), "the title is kept");
  Demand(stored.bytes == image.bytes, "the image is kept");
}

void DemandChosenImages(const Run& run, const std::vector<tools::Image>& stored) {
  const auto chosen = ChosenOf(run);
  Demand(stored.size() == chosen.size(), "every chosen image is kept, and no other");
  for (std::size_t i = 0; i < chosen.size(); ++i) DemandSame(stored[i], chosen[i]);
}

SaveEnd Save(Run& run, SaveJob::Mode mode) {
  const SaveResult result = RunSave(run.world.system, run.progress,
                                    {.sourcePath = kSource,
                                     .targetPath = kTarget,
                                     .firstBlock = run.first,
                                     .lastBlock = run.last,
                                     .mode = mode});
  Demand(result.end != SaveEnd::kFault, "nothing happens that no one foresaw");
  Demand(run.world.disk.Bytes(result.detail).has_value() == (result.end == SaveEnd::kNotNamed),
         "a whole copy is where it is said to be");
  if (result.end == SaveEnd::kNotNamed) run.world.disk.Take(result.detail);
  return result.end;
}

void SaveChosen(Run& run) {
  if (Save(run, SaveJob::Mode::kChosenCameras) != SaveEnd::kSaved) return run.DemandNoHalfFile();
  const std::vector<tools::Image> stored =
      ImagesOf(run.world.disk.View(kTarget), run.recording.Is20D());
  for (const tools::Image& image : stored)
    Demand((mdlSave::lngCamSelLow >> image.camera & 1) != 0, "only chosen cameras are kept");
  if (run.recording.IsSound() && run.IsUndisturbed()) DemandChosenImages(run, stored);
}

void SaveBlocks(Run& run) {
  if (Save(run, SaveJob::Mode::kWholeBlocks) != SaveEnd::kSaved) return run.DemandNoHalfFile();
  const std::string_view target = run.world.disk.View(kTarget);
  const std::size_t begin = static_cast<std::size_t>(run.first - 1) * kBlock;
  const std::size_t length = static_cast<std::size_t>(run.last - run.first + 1) * kBlock;
  Demand(target.size() == length, "every block is saved");
  if (!run.progress.messages.empty()) return;
  Demand(run.world.disk.View(kSource).substr(begin, length) == target, "blocks are unchanged");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  const bool wholeBlocks = data.ConsumeIntegralInRange(0, 15) == 0;
  Run run(data);
  mdlFileProcessing::bytBlockStatus = 0;
  mdlFileProcessing::bln20D = run.recording.Is20D();
  const bool valid = mdlFileProcessing::ScanSourceFile(run.world.disk, run.world.dates, kSource) ==
                     mdlFileProcessing::ReadEnd::kDone;
  if (run.recording.IsSound() && run.IsUndisturbed())
    Demand(valid == run.recording.EndsWell() &&
               mdlFileProcessing::lngBlockCount == run.recording.Blocks(),
           "the scan is right");
  mdlFileProcessing::CheckAvailability(run.world.disk, kSource, run.first, run.last);
  if (mdlFileProcessing::lngBlockCount > 0) {
    // The sliders keep the range inside the source.
    run.first = std::clamp(run.first, 1, mdlFileProcessing::lngBlockCount);
    run.last = std::clamp(run.last, 0, mdlFileProcessing::lngBlockCount);
    wholeBlocks ? SaveBlocks(run) : SaveChosen(run);
  }
  run.DemandNothingLeft();
  return 0;
}
