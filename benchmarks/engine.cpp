#include "benchmarks/engine.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "benchmarks/measure.h"
#include "capture/mdlFileProcessing.h"
#include "platform/posix/posix_disk.h"
#include "platform/steady_clock.h"
#include "save/camera_index.h"
#include "save/operations.h"
#include "tests/support/fake_platform.h"

namespace engine {
namespace {

namespace fs = std::filesystem;

class Progress : public SaveProgress {
 public:
  void ShowBlocksDone(std::int32_t, std::int32_t) override {}
  void ShowBlockMessage(const std::string& text) override {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
  void ShowHourglass(bool) override {}
  bool GoOn() override { return true; }
};

platform::Core& System() {
  static PosixDisk disk;
  static MemoryDisk drives;
  static FakeDates dates;
  static platform::SteadyClock clock;
  static platform::Core system{disk, disk, drives, dates, clock, "."};
  return system;
}

}  // namespace

double Scan(const std::string& source) {
  return Timed([&] { mdlFileProcessing::ScanSourceFile(System().files, System().dates, source); });
}

double Index(const std::string& source, std::int32_t blocks) {
  static CameraIndex index;
  Progress progress;
  SourceFile file(System().files, source);
  return Timed([&] { index = IndexBlockRange(System(), progress, file, 1, blocks); });
}

double Save(const std::string& source, const std::string& target, int cameras,
            std::int32_t blocks) {
  using Mode = SaveJob::Mode;
  // The engine splits paths as Windows does: what it writes is named from its folder.
  const fs::path before = fs::current_path();
  fs::current_path(fs::path(target).parent_path());
  const SaveJob job = {.sourcePath = source,
                       .targetPath = fs::path(target).filename(),
                       .firstBlock = 1,
                       .lastBlock = blocks,
                       .mode = cameras == 16 ? Mode::kWholeBlocks : Mode::kChosenCameras,
                       .cameras = (1U << cameras) - 1};
  Progress progress;
  SaveResult result;
  const double seconds = Timed([&] { result = RunSave(System(), progress, job); });
  fs::current_path(before);
  if (result.end == SaveEnd::kSaved) return seconds;
  std::fprintf(stderr, "the engine failed to save %s\n", target.c_str());
  std::exit(1);
}

double Heap() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd);
}

}  // namespace engine
