#pragma once

#include <functional>
#include <string>
#include <vector>

/// Becomes another program; its output and input stay this process's.
[[noreturn]] void Become(const std::vector<std::string>& command);
/// Runs a command and waits for it; answers its seconds. Ends the program when it ends with another
/// exit code.
double RunCommand(const std::vector<std::string>& command, int exitCode = 0);
/// The most memory that a command has had, bytes, a moment before it ended.
double PeakMemory(const std::vector<std::string>& command);

/// Fills the memory that is free with what this system keeps of a file that it has read, as on a
/// machine that has been in use for a while. A virtual machine may have given its free memory back
/// to its host, and who is the first to ask for it again waits several times as long as the next.
void FillMemory(const std::string& emptyFile);

/// The middle one of several values.
double Median(std::vector<double> values);

/// Does a job and answers the seconds that count.
using Job = std::function<double()>;

/// Medians of a job beside its rival.
struct Comparison {
  double seconds = 0;
  double ratio = 0;  ///< To the rival's seconds in the same round.
};

/// Compares jobs with their rival. Each round runs all of them, in turn forwards and backwards, so
/// that what slows the machine down slows down all.
std::vector<Comparison> Compare(const std::vector<Job>& jobs, const Job& rival);

/// How often each job is measured.
inline constexpr int kRounds = 5;

/// Prints a line of the table. `where` is where it was measured, `limit` the most that `value` may
/// be, 0 for none; both are shown by `format`.
void PrintLine(const std::string& figure, const std::string& where, const char* format,
               double value, double limit = 0);
/// Whether a printed figure has missed its target.
bool HasMissed();
