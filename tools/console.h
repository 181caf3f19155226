#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "tools/bytes.h"

namespace CLI {
class App;
}

/// What the tools read from command lines, and how they tell what they have found.
namespace tools {

/// The most blocks that a recording is taken to have.
inline constexpr int kMostBlocks = 4 << 20;

/// "A-B" or a single number, all from `least` to `most`. This and the next raise
/// `std::invalid_argument` for any other text.
Range ParseRange(const std::string& text, int least, int most);
/// "1,3,5-8".
std::set<int> ParseNumbers(const std::string& text, int least, int most);

/// "2021-03-04 12:34:56" for a time stamp, a number of seconds since 1960-01-01 00:00:00.
std::string TimeText(std::int64_t stamp);
/// A text in quotes; bytes that are not printable ASCII, quotes and backslashes as \xHH.
std::string Quoted(const std::string& text);
/// "1 image", "2 images".
std::string Counted(std::int64_t count, const std::string& thing);

/// Adds an option whose text `set` understands, or raises `std::invalid_argument`, each time that
/// it is given. `wanted` stands for the text in the help.
void AddText(CLI::App& app, const std::string& name, const std::string& wanted,
             const std::string& help, const std::function<void(const std::string&)>& set);

/// Reads the command line and does the work. Answers the program's exit code: the work's, or 2 when
/// the command line is wrong or the work raises an exception, which is told on standard error.
int RunTool(CLI::App& app, int argc, char** argv, const std::function<int()>& work);

}  // namespace tools
