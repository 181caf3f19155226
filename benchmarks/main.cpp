#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "benchmarks/measure.h"
#include "benchmarks/program.h"
#include "benchmarks/recordings.h"

/// Prints what the program costs, worked through its windows, beside what the system's own tools
/// need for the same bytes; where it says "command", "trim_recording" instead. To be run with a
/// Wine prefix whose drive C: has the program in its folder Trimbrook. The arguments:
///
///   start                  the program's start and size; to be run on one processor core
///   costs [OTHER [SLOW]]   what its work costs; two other file systems, drives Y: and S:, one of
///                          them slow

namespace {

namespace fs = std::filesystem;

constexpr int kBlocksOf1GiB = 512;
constexpr int kBlocksOf100GiB = 100 * kBlocksOf1GiB;
constexpr int kSmallImages = 246;  // In a block: 8 KB each.
constexpr int kLargeImages = 32;   // 64 KB each.
constexpr int kAllCameras = 16;

/// A folder that is written to, as this system and as the program have it.
struct Folder {
  std::string name;
  fs::path path;
  std::string inWine;
};

class Bench {
 public:
  explicit Bench(const fs::path& driveC) : home_{"own volume", driveC / "bench", "C:\\bench\\"} {
    fs::create_directory(home_.path);
    source_ = home_.path / "source.60D";
    program_.Do("start");  // The first one reads everything from the disk.
  }

  void PrintStart(const fs::path& driveC) {
    std::vector<double> seconds(kRounds);
    for (double& round : seconds) round = program_.Do("start").seconds;
    PrintLine("start of the program to its usable window, on one core", "window", "%.3f s",
              Median(seconds), 0.3);
    const auto bytes = static_cast<double>(fs::file_size(driveC / "Trimbrook/Trimbrook.exe"));
    PrintLine("size of the program", "-", "%.2f MiB", bytes / (1024 * 1024), 2);
  }

  void PrintOpening() {
    PrintMemory();
    MakeSource(kSmallImages, kBlocksOf100GiB, true);
    // Blocks that are not there are refused when all are scanned.
    PrintLine("scan, 100 GiB", "command", "%.3f s",
              RunCommand(Trim({"--blocks", "99999"}, home_.path / "none.60D"), 1), 0.5);
    std::vector<double> seconds(kRounds);
    for (double& round : seconds) round = Note(program_.Do("open C:\\bench\\source.60D"));
    PrintLine("opening, 100 GiB", "window", "%.3f s", Median(seconds), 0.5);
    PrintSilence("opening");
  }

  void PrintSaves(const std::vector<Folder>& others) {
    Open(kSmallImages);
    PrintSave("block range save, 1 GiB", home_, kAllCameras, 1.10, 1.05);
    for (const Folder& other : others)
      PrintSave("block range save, 1 GiB", other, kAllCameras, 1.10);
    PrintSave("1 of 16 cameras, images of 8 KB", home_, 1, 0.15, 0.12);
    PrintSave("15 of 16 cameras, images of 8 KB", home_, 15, 1.15);
    Open(kLargeImages);
    PrintSave("1 of 16 cameras, images of 64 KB", home_, 1, 0.15, 0.12);
    PrintSave("15 of 16 cameras, images of 64 KB", home_, 15, 1.15);
    PrintSilence("saving");
  }

  void PrintCancel(const Folder& folder) {
    std::vector<double> seconds(kRounds);
    for (double& round : seconds) {
      Clear(folder);
      round = Note(program_.Do("cancel " + folder.inWine + "target.60D"));
    }
    PrintLine("Cancel to the window gone, " + folder.name, "window", "%.3f s",
              *std::max_element(seconds.begin(), seconds.end()), 0.5);
    PrintSilence("cancelling, " + folder.name);
  }

  const Folder& home() const { return home_; }

 private:
  /// Nothing of it is left for the disk when it is read.
  void MakeSource(int images, int blocks, bool isSparse) {
    WriteRecording(source_, FullBlock(images), blocks, isSparse);
    sync();
  }

  void Open(int images) {
    MakeSource(images, kBlocksOf1GiB, false);
    program_.Do("open C:\\bench\\source.60D");
  }

  /// The command that saves from the source.
  std::vector<std::string> Trim(const std::vector<std::string>& options, const fs::path& target) {
    std::vector<std::string> command = {"build/release/packaging/trim_recording", source_, target,
                                        "--replace"};
    command.insert(command.end(), options.begin(), options.end());
    return command;
  }

  void PrintMemory() {
    const auto peak = [&](int blocks, const char* option, const char* value) {
      MakeSource(kSmallImages, blocks, true);
      return PeakMemory(Trim({option, value}, home_.path / "target.60D"));
    };
    const double least = peak(2, "--blocks", "1");
    PrintLine("memory a block, 100 GiB", "command", "%.1f bytes",
              (peak(kBlocksOf100GiB, "--blocks", "1") - least) / kBlocksOf100GiB, 64);
    PrintLine("memory an image, 10 GiB", "command", "%.1f bytes",
              (peak(10 * kBlocksOf1GiB, "--cameras", "1") - least) /
                  (10.0 * kBlocksOf1GiB * kSmallImages),
              32);
  }

  /// Earlier targets go, and what earlier jobs have left for the disk is written first: nobody pays
  /// for another. All find the source in memory.
  fs::path Clear(const Folder& folder) {
    fs::path target = folder.path / "target.60D";
    fs::remove(target);
    sync();
    RunCommand({"cp", source_, "/dev/null"});
    FillMemory(home_.path / "empty");
    return target;
  }

  void PrintSave(const std::string& figure, const Folder& folder, int cameras, double limit,
                 double limitOfCommand = 0) {
    const Job window = [&] {
      Clear(folder);
      const std::string target = folder.inWine + "target.60D";
      return Note(program_.Do("save " + std::to_string(cameras) + " " + target));
    };
    const Job command = [&] {
      return RunCommand(Trim({"--cameras", "1-" + std::to_string(cameras)}, Clear(folder)));
    };
    const Job cp = [&] {
      const fs::path target = Clear(folder);
      return RunCommand({"cp", source_, target}) + RunCommand({"sync", target});
    };
    const Job dd = [&] {
      return RunCommand({"dd", "bs=2M", "conv=fsync", "status=none", "if=" + source_.string(),
                         "of=" + Clear(folder).string()});
    };
    const auto results = Compare({window, command, cp}, dd);
    const std::string name = figure + ", " + folder.name;
    PrintLine(name, "window", "%.3f s", results[0].seconds);
    PrintLine("  to dd bs=2M conv=fsync of the whole source", "window", "x %.3f", results[0].ratio,
              limit);
    PrintLine("", "command", "x %.3f", results[1].ratio, limitOfCommand);
    PrintLine("", "cp, sync", "x %.3f", results[2].ratio);
    Clear(folder);
  }

  /// Keeps the longest silence of all jobs, and answers the job's seconds.
  double Note(const Measured& job) {
    silence_ = std::max(silence_, job.silence);
    return job.seconds;
  }

  void PrintSilence(const std::string& work) {
    PrintLine("longest time without an answer, " + work, "window", "%.3f s", silence_, 0.25);
    silence_ = 0;
  }

  Folder home_;
  fs::path source_;
  Program program_{{"wine", "build/mingw/benchmarks/bench_window.exe"}};
  double silence_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const std::string table = argc > 1 ? argv[1] : "";
  const char* prefix = std::getenv("WINEPREFIX");
  if (!prefix || (table != "start" && table != "costs")) {
    std::fprintf(stderr, "usage: bench start | bench costs [OTHER [SLOW]]\n");
    return 2;
  }
  const fs::path driveC = fs::path(prefix) / "drive_c";
  Bench bench(driveC);
  std::printf("%-56s %-7s %12s %12s\n", "figure", "where", "value", "at most");
  if (table == "start") {
    bench.PrintStart(driveC);
  } else {
    std::vector<Folder> others;
    if (argc > 2) others.push_back({"another volume", argv[2], "Y:\\"});
    bench.PrintOpening();
    bench.PrintSaves(others);
    bench.PrintCancel(bench.home());
    if (argc > 3) bench.PrintCancel({"slow disk", argv[3], "S:\\"});
  }
  return HasMissed() ? 1 : 0;
}
