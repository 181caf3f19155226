// Runs the program's own core on real files without its windows: scans a recording, checks which
// cameras a range of blocks has, and saves it. Prints what each step took.
// Usage: save_part SOURCE TARGET FIRST LAST [CAMERA...]

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "capture/mdlFileProcessing.h"
#include "platform/posix/posix_disk.h"
#include "save/save_messages.h"
#include "save/save_state.h"
#include "tests/support/fake_platform.h"
#include "tools/recording_reader.h"

namespace {

/// Shows nothing but what it must.
class PrintedProgress : public SaveProgress {
 public:
  void ShowBlocksDone(std::int32_t, std::int32_t) override {}
  void ShowBlockMessage(const std::string& text) override { Print(text); }
  void ShowHourglass(bool) override {}
  void LetMessagesRun() override {}
  bool StillSaving() override { return true; }

  static void Print(const std::string& text) {
    if (!text.empty()) std::printf("message: %s\n", text.c_str());
  }
};

double SecondsNow() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Prints how long a step took and the most memory that the process has had so far.
void Report(const char* step, double begin) {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%s %.3f s, peak %.1f MiB\n", step, SecondsNow() - begin,
              static_cast<double>(usage.ru_maxrss) / 1024);
}

std::string FolderOf(const std::string& path) {
  return std::filesystem::absolute(path).parent_path().string();
}

/// What a save is asked for; no cameras stand for whole blocks.
struct Job {
  std::string source;
  std::string target;
  std::int32_t first;
  std::int32_t last;
  std::int32_t cameras;
};

bool Scan(PosixDisk& disk, FakeDates& dates, const Job& job) {
  const double begin = SecondsNow();
  mdlFileProcessing::bln20D = tools::IsNameOf20D(job.source);
  const bool valid = mdlFileProcessing::ScanSourceFile(disk, dates, job.source) ==
                     mdlFileProcessing::ReadEnd::kDone;
  std::printf("blocks %d\n", mdlFileProcessing::lngBlockCount);
  Report("scan", begin);
  return valid;
}

void ListCameras(PosixDisk& disk, const Job& job) {
  const double begin = SecondsNow();
  mdlFileProcessing::CheckAvailability(disk, job.source, job.first, job.last);
  std::int32_t cameras = 0;
  for (int i = 1; i <= mdlFileProcessing::lngCamMask.UpperBound(); ++i)
    cameras |= mdlFileProcessing::lngCamMask[i];
  std::printf("cameras %04x\n", static_cast<unsigned>(cameras));
  Report("availability", begin);
}

bool Save(platform::Platform& system, const Job& job) {
  PrintedProgress progress;
  const double begin = SecondsNow();
  mdlSave::lngCamSelLow = job.cameras;
  const SaveResult result = RunSave(
      system, progress,
      {.sourcePath = job.source,
       .targetPath = job.target,
       .firstBlock = job.first,
       .lastBlock = job.last,
       .mode = job.cameras == 0 ? SaveJob::Mode::kWholeBlocks : SaveJob::Mode::kChosenCameras});
  Report("save", begin);
  PrintedProgress::Print(MessageOfLosses(result));
  PrintedProgress::Print(MessageOfEnd(result).text);
  return result.end == SaveEnd::kSaved;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) {
    std::fprintf(stderr, "Usage: save_part SOURCE TARGET FIRST LAST [CAMERA...]\n");
    return 2;
  }
  Job job = {argv[1], argv[2], std::atoi(argv[3]), std::atoi(argv[4]), 0};
  for (int i = 5; i < argc; ++i) job.cameras |= 1 << (std::atoi(argv[i]) - 1);
  PosixDisk disk;
  FakePlatform outside;
  platform::Platform system{disk,         disk,          outside.registry, outside.desktop,
                            outside.disk, outside.dates, outside.clock,    FolderOf(job.target),
                            "Save"};
  if (!Scan(disk, outside.dates, job)) return 1;
  ListCameras(disk, job);
  return Save(system, job) ? 0 : 1;
}
