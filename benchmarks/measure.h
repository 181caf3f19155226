#pragma once

#include <functional>
#include <string>
#include <vector>

/// What a run of a job took.
struct Measured {
  double seconds = 0;
  double peakMemory = 0;  ///< Of the process that ran it, bytes; 0 when it was not measured.
  double heap = 0;        ///< Allocated there and not freed after it, bytes.
};

/// The middle one of several values.
double Median(std::vector<double> values);

/// Runs a job in this process.
Measured Timed(const std::function<void()>& job);
/// Becomes another program; its output and input stay this process's.
[[noreturn]] void Become(const std::vector<std::string>& command);
/// Runs a command and waits for it. Ends the program when it fails.
void RunCommand(const std::vector<std::string>& command);

/// A job that is measured beside others: what it does, and what must be tidied up before each run.
struct Contender {
  std::function<Measured()> run;
  std::function<void()> before = [] {};
};

/// Medians of a job: its seconds, and its ratios to its rivals.
struct Comparison {
  double seconds = 0;
  std::vector<double> ratios;
  double peakMemory = 0;  ///< Bytes.
};

/// Compares each of several jobs with all of their rivals. Each round runs all of them, in turn
/// forwards and backwards, so that what slows the machine down slows down all.
std::vector<Comparison> Compare(const std::vector<Contender>& jobs,
                                const std::vector<Contender>& rivals, int rounds = 9);

/// Prints the head of the table, and one line of it. `place` is where it was measured, `limit` the
/// most that `value` may be, 0 for none; both are shown by `format`.
void PrintHead();
void PrintLine(const std::string& figure, const std::string& place, const Comparison& measured,
               const char* format, double value, double limit = 0);
/// Whether a printed figure has missed its target.
bool HasMissed();
