#include "tools/command_line.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <stdexcept>

namespace tools {
namespace {

std::int64_t ParseNumber(const std::string& name, const std::string& text, std::int64_t least,
                         std::int64_t most) {
  std::int64_t value = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end || value < least || value > most)
    throw std::invalid_argument(name + ": wanted a number from " + std::to_string(least) + " to " +
                                std::to_string(most) + ", not \"" + text + "\"");
  return value;
}

const Option& FindOption(const std::vector<Option>& options, const std::string& name) {
  const auto found = std::find_if(options.begin(), options.end(),
                                  [&](const Option& option) { return option.name == name; });
  if (found == options.end()) throw std::invalid_argument("unknown option " + name);
  return *found;
}

}  // namespace

Range ParseRange(const std::string& name, const std::string& text, int least, int most) {
  const std::size_t dash = text.find('-', 1);
  const std::string first = text.substr(0, dash);
  const std::string last = dash == std::string::npos ? first : text.substr(dash + 1);
  const Range range = {static_cast<int>(ParseNumber(name, first, least, most)),
                       static_cast<int>(ParseNumber(name, last, least, most))};
  if (range.first > range.last) throw std::invalid_argument(name + ": " + text + " is empty");
  return range;
}

CommandLine::CommandLine(int argc, char** argv, const std::vector<Option>& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument.rfind("--", 0) != 0) {
      arguments_.push_back(argument);
      continue;
    }
    const std::size_t equals = argument.find('=');
    const Option& option = FindOption(options, argument.substr(0, equals));
    std::string value;
    if (equals != std::string::npos) {
      value = argument.substr(equals + 1);
    } else if (!option.value.empty()) {
      if (++i == argc) throw std::invalid_argument(option.name + " needs a value");
      value = argv[i];
    }
    values_[option.name].push_back(value);
  }
}

std::string CommandLine::Text(const std::string& name, const std::string& fallback) const {
  return Has(name) ? values_.at(name).back() : fallback;
}

std::vector<std::string> CommandLine::All(const std::string& name) const {
  return Has(name) ? values_.at(name) : std::vector<std::string>();
}

std::int64_t CommandLine::Number(const std::string& name, std::int64_t fallback, std::int64_t least,
                                 std::int64_t most) const {
  return Has(name) ? ParseNumber(name, Text(name, ""), least, most) : fallback;
}

double CommandLine::Decimal(const std::string& name, double fallback) const {
  if (!Has(name)) return fallback;
  std::istringstream in(Text(name, ""));
  double value = 0;
  if (!(in >> value) || in.peek() != EOF || value < 0 || value > 1e9)
    throw std::invalid_argument(name + ": wanted a number, not \"" + in.str() + "\"");
  return value;
}

Range CommandLine::NumberRange(const std::string& name, Range fallback, int least, int most) const {
  return Has(name) ? ParseRange(name, Text(name, ""), least, most) : fallback;
}

std::vector<int> CommandLine::Numbers(const std::string& name, const std::string& fallback,
                                      int least, int most) const {
  std::set<int> numbers;
  std::istringstream in(Text(name, fallback));
  for (std::string part; std::getline(in, part, ',');) {
    const Range range = ParseRange(name, part, least, most);
    for (int number = range.first; number <= range.last; ++number) numbers.insert(number);
  }
  if (numbers.empty()) throw std::invalid_argument(name + ": none given");
  return {numbers.begin(), numbers.end()};
}

std::string HelpText(const std::vector<Option>& options) {
  constexpr std::size_t kColumn = 26;
  std::string text;
  for (const Option& option : options) {
    std::string head = "  " + option.name + (option.value.empty() ? "" : " " + option.value);
    head.resize(std::max(head.size() + 2, kColumn), ' ');
    text += head;
    for (const char c : option.help)
      text += c == '\n' ? "\n" + std::string(kColumn, ' ') : std::string(1, c);
    text += '\n';
  }
  return text;
}

}  // namespace tools
