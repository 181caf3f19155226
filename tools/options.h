#pragma once

#include <getopt.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace tools {

/// One long option of a tool: what it does to the tool's `Wishes`. Without a value name it is a
/// switch.
template <typename Wishes>
struct Option {
  const char* name;
  const char* value;
  const char* help;
  void (*apply)(Wishes& wishes, const std::string& value);
};

/// An inclusive range of whole numbers.
struct Range {
  int first;
  int last;
};

/// A whole number from `least` to `most`. This and the next two raise `std::invalid_argument`
/// for any other text.
int ParseInt(const std::string& text, int least, int most);
/// "A-B" or a single number.
Range ParseRange(const std::string& text, int least, int most);
/// "1,3,5-8", sorted.
std::vector<int> ParseNumbers(const std::string& text, int least, int most);

/// One line or more of a help text: a name in a column of its own, then what it means.
std::string HelpLine(const std::string& name, const std::string& help);

/// The help of some options.
template <typename Wishes, std::size_t kCount>
std::string HelpText(const std::array<Option<Wishes>, kCount>& options) {
  std::string text;
  for (const Option<Wishes>& each : options)
    text += HelpLine(std::string("--") + each.name +
                         (each.value == nullptr ? "" : std::string(" ") + each.value),
                     each.help);
  return text;
}

/// Applies the options of a command line in their order and returns its other arguments. A mistake
/// of the user's raises `std::invalid_argument`.
template <typename Wishes, std::size_t kCount>
std::vector<std::string> ReadOptions(int argc, char** argv,
                                     const std::array<Option<Wishes>, kCount>& options,
                                     Wishes& wishes) {
  std::array<option, kCount + 1> table = {};
  for (std::size_t i = 0; i < kCount; ++i) {
    table[i].name = options[i].name;
    table[i].has_arg = options[i].value == nullptr ? no_argument : required_argument;
  }
  int index = 0;
  for (int found = 0; (found = getopt_long(argc, argv, "", table.data(), &index)) != -1;) {
    if (found != 0) throw std::invalid_argument("such an option is not known");
    const Option<Wishes>& chosen = options[static_cast<std::size_t>(index)];
    try {
      chosen.apply(wishes, optarg == nullptr ? "" : optarg);
    } catch (const std::invalid_argument& mistake) {
      throw std::invalid_argument(std::string("--") + chosen.name + ": " + mistake.what());
    }
  }
  return {argv + optind, argv + argc};
}

}  // namespace tools
