#include <unistd.h>

#include <cstdio>
#include <deque>
#include <filesystem>
#include <map>
#include <utility>

#include "benchmarks/measure.h"
#include "benchmarks/recordings.h"
#include "benchmarks/worker.h"

/// Prints what the program costs, natively and under Wine, beside what the system's own tools need
/// for the same bytes. The arguments are the folder for its files, which must be drive X: under
/// Wine (the folder of the built program must be drive P:), and a table:
///
///   start    the program's start and size; to be run on one processor core
///   costs    what the save engine's jobs cost
///   growth   how that grows with the recording

namespace {

constexpr int kBlocksOf1GiB = 512;
constexpr int kSmallImages = 246;  // In a block: 8 KB each.
constexpr int kLargeImages = 32;   // 64 KB each.

constexpr char kProgram[] = "build/windows/Trimbrook.exe";
constexpr char kNativeWorker[] = "build/release/benchmarks/bench_worker";
constexpr char kWineWorker[] = "build/mingw/benchmarks/bench_worker.exe";
constexpr char kWineStarter[] = "build/mingw/benchmarks/bench_start.exe";

/// Where jobs are done.
struct Place {
  Place(std::string itsName, const std::vector<std::string>& command)
      : name(std::move(itsName)), worker(command) {}

  std::string name;
  Worker worker;
};

class Bench {
 public:
  explicit Bench(const std::filesystem::path& folder)
      : source_(folder / "source.60D"), target_(folder / "target.60D") {
    places_.emplace_back("native", std::vector<std::string>{kNativeWorker, folder.string()});
    places_.emplace_back("Wine", std::vector<std::string>{"wine", kWineWorker, "x:"});
    // Wine is up before another program is started there.
    for (Place& place : places_) place.worker.Do("forget");
  }
  ~Bench() {
    std::filesystem::remove(source_);
    std::filesystem::remove(target_);
  }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  void PrintStart() {
    Worker starter({"wine", kWineStarter, "p:\\Trimbrook.exe", "frmTrimbrook"});
    starter.Do("start");  // The first one reads everything from the disk.
    const Contender start = {[&] { return starter.Do("start"); }};
    const Comparison result = Compare({start}, {})[0];
    PrintLine("start of the program to its usable window, on one core", "Wine", result, "%.3f s",
              result.seconds, 0.3);
    constexpr double kMiB = 1024 * 1024;
    const auto bytes = static_cast<double>(std::filesystem::file_size(kProgram));
    PrintLine("size of the program", "-", {}, "%.2f MiB", bytes / kMiB, 2);
  }

  void PrintCosts() {
    // Before the saves: memory is measured while the workers have none to spare.
    MeasureScanAndIndex();
    WriteRecording(source_, FullBlock(kSmallImages), kBlocksOf1GiB);
    MeasureBlockRangeSave();
    MeasureCameraSaves("8 KB images");
    WriteRecording(source_, FullBlock(kLargeImages), kBlocksOf1GiB);
    MeasureCameraSaves("64 KB images");
  }

  void PrintGrowth() {
    for (const int gibibytes : {1, 10, 100}) {
      const int blockCount = gibibytes * kBlocksOf1GiB;
      WriteSparseRecording(source_, FullBlock(kSmallImages), blockCount);
      const std::string blocks = std::to_string(blockCount);
      // The largest takes minutes: once is enough, and nothing disturbs it for long.
      const int rounds = gibibytes == 100 ? 1 : 5;
      for (Place& place : places_) {
        PrintGrowthOf("scan", place, "scan", gibibytes, rounds);
        PrintGrowthOf("camera index", place, "index " + blocks, gibibytes, rounds);
        if (gibibytes < 100)
          PrintGrowthOf("block range save", place, "range " + blocks, gibibytes, rounds);
        PrintGrowthOf("block range save, what it writes discarded", place, "discard " + blocks,
                      gibibytes, rounds);
        PrintGrowthOf("1 of 16 cameras", place, "cameras 16 " + blocks, gibibytes, rounds);
      }
    }
  }

 private:
  Contender Job(Place& place, const std::string& job) const {
    return WithoutTarget([&place, job] { return place.worker.Do(job); });
  }
  std::vector<Contender> JobEverywhere(const std::string& job) {
    std::vector<Contender> jobs;
    for (Place& place : places_) jobs.push_back(Job(place, job));
    return jobs;
  }
  /// What earlier jobs have left for the disk is written first: nobody pays for another.
  Contender WithoutTarget(std::function<Measured()> job) const {
    return {std::move(job), [this] {
              std::filesystem::remove(target_);
              sync();
            }};
  }
  Contender Command(std::vector<std::string> words) const {
    return WithoutTarget([words = std::move(words)] { return Timed([&] { RunCommand(words); }); });
  }
  Contender Dd() const {
    return Command({"dd", "bs=2M", "status=none", "if=" + source_, "of=" + target_});
  }

  void MeasureScanAndIndex() {
    constexpr int kBlocks = 100 * kBlocksOf1GiB;
    const std::string index = "index " + std::to_string(kBlocks);
    WriteSparseRecording(source_, FullBlock(kSmallImages), kBlocks);
    for (Place& place : places_) {
      const double empty = place.worker.Do("forget").heap;
      const Comparison scan = Compare({Job(place, "scan")}, {})[0];
      const double scanned = place.worker.Do("scan").heap;
      PrintLine("scan, 100 GiB", place.name, scan, "%.3f s", scan.seconds, 0.5);
      const Contender job = {[&] { return place.worker.Do(index); },
                             [&] { place.worker.Do("forget"); }};
      const Comparison indexing = Compare({job}, {})[0];
      PrintLine("camera index, 100 GiB", place.name, indexing, "%.3f s", indexing.seconds);
      const double indexed = place.worker.Do(index).heap;
      place.worker.Do("forget");
      if (indexed <= 0) continue;
      PrintLine("  scan's memory a block", place.name, scan, "%.1f bytes",
                (scanned - empty) / kBlocks, 64);
      PrintLine("  index's memory an image", place.name, indexing, "%.1f bytes",
                (indexed - scanned) / (1.0 * kSmallImages * kBlocks), 32);
    }
  }

  void MeasureBlockRangeSave() {
    const auto results = Compare(JobEverywhere("range " + std::to_string(kBlocksOf1GiB)),
                                 {Dd(), Command({"cp", source_, target_})});
    PrintRatios("block range save, 1 GiB, to dd bs=2M", results, 0, 1.05);
    PrintRatios("  to cp", results, 1, 0);
  }

  void MeasureCameraSaves(const std::string& images) {
    for (Place& place : places_) place.worker.Do("scan");
    MeasureCameraSave("1 of 16 cameras, " + images, 0x0010, 1.3, 0.15);
    MeasureCameraSave("4 of 16 cameras, " + images, 0x1111, 0, 0);
    MeasureCameraSave("15 of 16 cameras, " + images, 0x7FFF, 0, 1.10);
  }

  void MeasureCameraSave(const std::string& what, std::int32_t cameras, double bareLimit,
                         double ddLimit) {
    const std::string range = std::to_string(cameras) + " " + std::to_string(kBlocksOf1GiB);
    for (Place& place : places_) place.worker.Do("plan " + range);
    std::vector<Contender> rivals = JobEverywhere("bare");
    rivals.push_back(Dd());
    const auto results = Compare(JobEverywhere("cameras " + range), rivals);
    for (std::size_t i = 0; i < results.size(); ++i)
      PrintLine(what + ", to bare reads and writes", places_[i].name, results[i], "x %.3f",
                results[i].ratios[i], bareLimit);
    PrintRatios("  to dd bs=2M of the whole source", results, places_.size(), ddLimit);
  }

  void PrintRatios(const std::string& figure, const std::vector<Comparison>& results,
                   std::size_t rival, double limit) const {
    for (std::size_t i = 0; i < results.size(); ++i)
      PrintLine(figure, places_[i].name, results[i], "x %.3f", results[i].ratios[rival], limit);
  }

  void PrintGrowthOf(const std::string& figure, Place& place, const std::string& job, int gibibytes,
                     int rounds) const {
    const Comparison result = Compare({Job(place, job)}, {}, rounds)[0];
    PrintLine(figure + ", " + std::to_string(gibibytes) + " GiB", place.name, result, "%.2f ms/GiB",
              result.seconds * 1000 / gibibytes);
  }

  std::string source_;
  std::string target_;
  std::deque<Place> places_;  // Workers stay where they are.
};

}  // namespace

int main(int argc, char** argv) {
  const std::map<std::string, void (Bench::*)()> tables = {{"start", &Bench::PrintStart},
                                                           {"costs", &Bench::PrintCosts},
                                                           {"growth", &Bench::PrintGrowth}};
  const auto table = tables.find(argc == 3 ? argv[2] : "");
  if (table == tables.end()) {
    std::fprintf(stderr, "usage: bench FOLDER start|costs|growth\n");
    return 2;
  }
  Bench bench(argv[1]);
  PrintHead();
  (bench.*table->second)();
  return HasMissed() ? 1 : 0;
}
