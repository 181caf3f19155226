#include "tools/console.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace tools {

Range ParseRange(const std::string& text, int least, int most) {
  std::istringstream in(text);
  Range range = {};
  in >> std::noskipws >> range.first;
  range.last = range.first;
  if (in.good() && in.get() == '-') in >> range.last;
  if (in.fail() || !in.eof() || range.first < least || range.last > most)
    throw std::invalid_argument("wanted a number from " + std::to_string(least) + " to " +
                                std::to_string(most) + ", or a range of them, not \"" + text +
                                "\"");
  if (range.first > range.last) throw std::invalid_argument(text + " is empty");
  return range;
}

std::set<int> ParseNumbers(const std::string& text, int least, int most) {
  std::set<int> numbers;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, ',');) {
    const Range range = ParseRange(part, least, most);
    for (int number = range.first; number <= range.last; ++number) numbers.insert(number);
  }
  if (numbers.empty()) throw std::invalid_argument("no number is given");
  return numbers;
}

std::string TimeText(std::int64_t stamp) {
  using namespace std::chrono;
  const sys_seconds time = sys_days(year(1960) / January / 1) + seconds(stamp);
  const year_month_day date(floor<days>(time));
  const auto second = static_cast<int>((time - floor<days>(time)).count());
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                second / 3600, second / 60 % 60, second % 60);
  return text;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned char>(c));
    const bool plain = c >= ' ' && c <= '~' && c != '"' && c != '\\';
    quoted += plain ? std::string(1, c) : escape;
  }
  return quoted + '"';
}

std::string Counted(std::int64_t count, const std::string& thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

void AddText(CLI::App& app, const std::string& name, const std::string& wanted,
             const std::string& help, const std::function<void(const std::string&)>& set) {
  app.add_option_function<std::string>(name, set, help)->option_text(wanted)->trigger_on_parse();
}

int RunTool(CLI::App& app, int argc, char** argv, const std::function<int()>& work) {
  constexpr int kNotUsable = 2;
  app.set_help_flag("--help", "this text");
  app.set_version_flag("--version", app.get_name() + " " TRIMBROOK_VERSION, "the version");
  try {
    app.parse(argc, argv);
    return work();
  } catch (const CLI::ParseError& end) {
    return app.exit(end) == 0 ? 0 : kNotUsable;
  } catch (const std::exception& failure) {
    std::cerr << app.get_name() << ": " << failure.what() << " (--help tells more)\n";
    return kNotUsable;
  }
}

}  // namespace tools
