#include "benchmarks/measure.h"

#include <sys/sysinfo.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

bool hasMissed = false;

}  // namespace

void Become(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

double RunCommand(const std::vector<std::string>& command, int exitCode) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const pid_t child = fork();
  if (child == 0) Become(command);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) != exitCode) {
    std::fprintf(stderr, "%s failed\n", command[0].c_str());
    std::exit(1);
  }
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double PeakMemory(const std::vector<std::string>& command) {
  const pid_t child = fork();
  if (child == 0) Become(command);
  double peak = 0;
  while (waitpid(child, nullptr, WNOHANG) == 0) {
    std::ifstream status("/proc/" + std::to_string(child) + "/status");
    for (std::string word; status >> word && word != "VmHWM:";) continue;
    double kilobytes = 0;
    if (status >> kilobytes) peak = kilobytes * 1024;
    usleep(1000);
  }
  return peak;
}

void FillMemory(const std::string& emptyFile) {
  constexpr std::uint64_t kLeftFree = 512;  // MiB, as all here.
  static std::uint64_t read = 0;
  struct sysinfo memory = {};
  sysinfo(&memory);
  const std::uint64_t free = std::uint64_t{memory.freeram} * memory.mem_unit >> 20;
  const std::uint64_t count = std::max(free, kLeftFree) - kLeftFree;
  RunCommand({"truncate", "--size=1T", emptyFile});
  RunCommand({"dd", "bs=1M", "status=none", "if=" + emptyFile, "of=/dev/null",
              "skip=" + std::to_string(read), "count=" + std::to_string(count)});
  read += count;
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + std::ssize(values) / 2;
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

std::vector<Comparison> Compare(const std::vector<Job>& jobs, const Job& rival) {
  std::vector<Job> all = jobs;
  all.push_back(rival);
  std::vector<std::vector<double>> seconds(all.size());
  std::vector<std::vector<double>> ratios(all.size());
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t i = 0; i < all.size(); ++i) {
      const std::size_t which = round % 2 == 0 ? i : all.size() - 1 - i;
      seconds[which].push_back(all[which]());
    }
    for (std::size_t i = 0; i < all.size(); ++i)
      ratios[i].push_back(seconds[i].back() / seconds.back().back());
  }
  std::vector<Comparison> results;
  for (std::size_t i = 0; i < jobs.size(); ++i)
    results.push_back({Median(seconds[i]), Median(ratios[i])});
  return results;
}

void PrintLine(const std::string& figure, const std::string& where, const char* format,
               double value, double limit) {
  char shown[32] = "";
  char most[32] = "-";
  std::snprintf(shown, sizeof shown, format, value);
  if (limit > 0) std::snprintf(most, sizeof most, format, limit);
  const bool missed = limit > 0 && value > limit;
  hasMissed = hasMissed || missed;
  const char* verdict = limit <= 0 ? "" : missed ? "MISSED" : "held";
  std::printf("%-56s %-7s %12s %12s  %s\n", figure.c_str(), where.c_str(), shown, most, verdict);
  std::fflush(stdout);
}

bool HasMissed() {
  return hasMissed;
}
