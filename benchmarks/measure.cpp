#include "benchmarks/measure.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

bool hasMissed = false;

using Runs = std::vector<Measured>;

double MedianRatio(const Runs& runs, const Runs& rival) {
  std::vector<double> ratios;
  for (std::size_t round = 0; round < runs.size(); ++round)
    ratios.push_back(runs[round].seconds / rival[round].seconds);
  return Median(std::move(ratios));
}

Comparison Summary(const Runs& runs) {
  Comparison result;
  std::vector<double> seconds;
  for (const Measured& run : runs) {
    seconds.push_back(run.seconds);
    result.peakMemory = std::max(result.peakMemory, run.peakMemory);
  }
  result.seconds = Median(std::move(seconds));
  return result;
}

}  // namespace

double Median(std::vector<double> values) {
  const auto middle = values.begin() + std::ssize(values) / 2;
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Measured Timed(const std::function<void()>& job) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  job();
  return {.seconds = std::chrono::duration<double>(Clock::now() - start).count()};
}

void Become(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

void RunCommand(const std::vector<std::string>& command) {
  const pid_t child = fork();
  if (child == 0) Become(command);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
    std::fprintf(stderr, "%s failed\n", command[0].c_str());
    std::exit(1);
  }
}

std::vector<Comparison> Compare(const std::vector<Contender>& jobs,
                                const std::vector<Contender>& rivals, int rounds) {
  std::vector<Contender> all = jobs;
  all.insert(all.end(), rivals.begin(), rivals.end());
  std::vector<Runs> runs(all.size());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < all.size(); ++i) {
      const std::size_t which = round % 2 == 0 ? i : all.size() - 1 - i;
      all[which].before();
      runs[which].push_back(all[which].run());
    }
  }
  std::vector<Comparison> results;
  for (std::size_t job = 0; job < jobs.size(); ++job) {
    results.push_back(Summary(runs[job]));
    for (std::size_t rival = jobs.size(); rival < all.size(); ++rival)
      results.back().ratios.push_back(MedianRatio(runs[job], runs[rival]));
  }
  return results;
}

void PrintHead() {
  std::printf("%-58s %-7s %10s %12s %12s %11s\n", "figure", "where", "time", "value", "at most",
              "peak memory");
}

void PrintLine(const std::string& figure, const std::string& place, const Comparison& measured,
               const char* format, double value, double limit) {
  char shown[32] = "";
  char most[32] = "-";
  std::snprintf(shown, sizeof shown, format, value);
  if (limit > 0) std::snprintf(most, sizeof most, format, limit);
  const bool missed = limit > 0 && value > limit;
  hasMissed = hasMissed || missed;
  const char* verdict = limit <= 0 ? "" : missed ? "MISSED" : "held";
  std::printf("%-58s %-7s %8.3f s %12s %12s %7.0f MiB  %s\n", figure.c_str(), place.c_str(),
              measured.seconds, shown, most, measured.peakMemory / (1024 * 1024), verdict);
  std::fflush(stdout);
}

bool HasMissed() {
  return hasMissed;
}
