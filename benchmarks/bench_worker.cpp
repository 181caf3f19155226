#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>

#include "benchmarks/bare_save.h"
#include "benchmarks/discarding_files.h"
#include "benchmarks/worker_system.h"
#include "capture/mdlFileProcessing.h"
#include "save/camera_index.h"
#include "save/operations.h"
#include "save/save_state.h"

/// Does jobs of the save engine and tells what they took. The argument is the folder of its files,
/// source.60D and target.60D. Each job is read from the input and answered by its seconds and the
/// heap in use after it, in bytes:
///
///   scan                   reads the source's block index
///   index BLOCKS           reads its camera index, from the first block on
///   forget                 frees that index
///   range BLOCKS           saves whole blocks into the target
///   discard BLOCKS         the same, but what is written is not kept
///   cameras MASK BLOCKS    indexes blocks and saves the images of the cameras in a mask
///   plan MASK BLOCKS       works out the fewest reads and writes that such a save could do with
///   bare                   does what was planned

namespace {

class Progress : public SaveProgress {
 public:
  void ShowBlocksDone(std::int32_t, std::int32_t) override {}
  void ShowBlockMessage(const std::string& text) override {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
  void ShowHourglass(bool) override {}
  void LetMessagesRun() override {}
  bool StillSaving() override { return true; }
};

class Worker {
 public:
  explicit Worker(const std::string& folder)
      : source_(folder + "/source.60D"), target_(folder + "/target.60D"), system_(WorkerSystem()) {
    system_.programFolder = folder;
  }

  void Do(const std::string& job) {
    if (job == "scan") mdlFileProcessing::ScanSourceFile(system_.files, system_.dates, source_);
    if (job == "index") Index(Argument());
    if (job == "forget") index_ = CameraIndex();
    if (job == "range") Save(system_.files, SaveJob::Mode::kWholeBlocks);
    if (job == "discard") {
      DiscardingFiles discarding(system_.files);
      Save(discarding, SaveJob::Mode::kWholeBlocks);
    }
    if (job == "cameras") SaveCameras();
    if (job == "plan") Plan();
    if (job == "bare") bare_->Run(system_.files, source_, target_);
  }

 private:
  static std::int32_t Argument() {
    std::int32_t value = 0;
    std::cin >> value;
    return value;
  }

  void Index(std::int32_t blocks) {
    index_ = IndexBlockRange(system_, progress_, source_, 1, blocks);
  }

  void Save(platform::Files& files, SaveJob::Mode mode) {
    platform::Platform system{files,           system_.names,         system_.registry,
                              system_.desktop, system_.drives,        system_.dates,
                              system_.clock,   system_.programFolder, system_.programName};
    const SaveResult result = RunSave(system, progress_,
                                      {.sourcePath = source_,
                                       .targetPath = target_,
                                       .firstBlock = 1,
                                       .lastBlock = Argument(),
                                       .mode = mode});
    if (result.end != SaveEnd::kSaved) std::exit(1);
  }

  void SaveCameras() {
    mdlSave::lngCamSelLow = Argument();
    Save(system_.files, SaveJob::Mode::kChosenCameras);
  }

  void Plan() {
    const std::int32_t cameras = Argument();
    Index(Argument());
    bare_.emplace(index_, cameras);
    index_ = CameraIndex();
  }

  std::string source_;
  std::string target_;
  platform::Platform& system_;
  std::optional<BareSave> bare_;
  CameraIndex index_;
  Progress progress_;
};

}  // namespace

int main(int argc, char** argv) {
  using Clock = std::chrono::steady_clock;
  if (argc != 2) return 2;
  Worker worker(argv[1]);
  for (std::string job; std::cin >> job;) {
    const auto start = Clock::now();
    worker.Do(job);
    const std::chrono::duration<double> seconds = Clock::now() - start;
    std::cout << seconds.count() << ' ' << HeapInUse() << std::endl;
  }
  return 0;
}
