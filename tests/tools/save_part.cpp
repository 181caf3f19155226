// Runs the program's own core on real files without its windows: scans a recording, checks which
// cameras a range of blocks has, and saves it. Prints what each step took.
// Usage: save_part SOURCE TARGET FIRST LAST [CAMERA...]

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "capture/mdlFileProcessing.h"
#include "platform/posix/posix_disk.h"
#include "save/camera_index.h"
#include "save/operations.h"
#include "save/save_state.h"
#include "tests/support/fake_dates.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/memory_disk.h"
#include "tools/recording_reader.h"

namespace {

/// Shows nothing but the messages.
class PrintedProgress : public SaveProgress {
 public:
  void ShowBlocksDone(std::int32_t, std::int32_t) override {}
  void ShowMessage(const std::string& text) override { std::printf("message: %s\n", text.c_str()); }
  void ShowHourglass(bool) override {}
  void ShowFinished() override {}
  void ShowFailed() override {}
  void LetMessagesRun() override {}
  bool StillSaving() override { return true; }
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

/// One save, with the real disk below the core.
class Job {
 public:
  Job(std::string from, std::string to, std::int32_t firstBlock, std::int32_t lastBlock)
      : source_(std::move(from)), target_(std::move(to)), first_(firstBlock), last_(lastBlock) {}

  bool Scan() {
    mdlFileProcessing::bln20D = tools::IsNameOf20D(source_);
    const double begin = SecondsNow();
    const bool valid = mdlFileProcessing::ScanSourceFile(disk_, dates_, source_) == 1;
    std::printf("blocks %d\n", mdlFileProcessing::lngBlockCount);
    Report("scan", begin);
    return valid;
  }

  void ListCameras() {
    const double begin = SecondsNow();
    mdlFileProcessing::CheckAvailability(disk_, source_, first_, last_);
    std::int32_t cameras = 0;
    for (int i = 1; i <= mdlFileProcessing::lngCamMask.UpperBound(); ++i)
      cameras |= mdlFileProcessing::lngCamMask[i];
    std::printf("cameras %04x\n", static_cast<unsigned>(cameras));
    Report("availability", begin);
  }

  bool Save(std::int32_t chosen) {
    platform::Platform system{disk_,   disk_,  registry_,         desktop_,
                              drives_, dates_, FolderOf(target_), "Save"};
    PrintedProgress progress;
    double begin = SecondsNow();
    if (chosen == 0) {
      const bool saved =
          SaveBlockRange(system, progress, source_, target_, first_, last_) == SaveOutcome::kSaved;
      Report("save", begin);
      return saved;
    }
    mdlSave::lngCamSelLow = chosen;
    IndexBlockRange(disk_, source_, first_, last_);
    Report("index", begin);
    begin = SecondsNow();
    const bool saved =
        SaveChosenCameras(system, progress, source_, target_, first_, last_) == SaveOutcome::kSaved;
    Report("save", begin);
    return saved;
  }

 private:
  static std::string FolderOf(const std::string& path) {
    return std::filesystem::absolute(path).parent_path().string();
  }

  std::string source_;
  std::string target_;
  std::int32_t first_;
  std::int32_t last_;
  PosixDisk disk_;
  FakeDates dates_{FakeDates::Style::k24Hour};
  FakeRegistry registry_;
  FakeDesktop desktop_;
  MemoryDisk drives_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) {
    std::fprintf(stderr, "Usage: save_part SOURCE TARGET FIRST LAST [CAMERA...]\n");
    return 2;
  }
  std::int32_t chosen = 0;
  for (int i = 5; i < argc; ++i) chosen |= 1 << (std::atoi(argv[i]) - 1);
  Job job(argv[1], argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
  if (!job.Scan()) return 1;
  job.ListCameras();
  return job.Save(chosen) ? 0 : 1;
}
