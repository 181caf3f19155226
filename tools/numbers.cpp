#include "tools/numbers.h"

#include <charconv>
#include <set>
#include <sstream>
#include <stdexcept>

namespace tools {
namespace {

int ParseInt(const std::string& text, int least, int most) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end || value < least || value > most)
    throw std::invalid_argument("wanted a number from " + std::to_string(least) + " to " +
                                std::to_string(most) + ", not \"" + text + "\"");
  return value;
}

}  // namespace

Range ParseRange(const std::string& text, int least, int most) {
  const std::size_t dash = text.find('-', 1);
  const std::string first = text.substr(0, dash);
  const std::string last = dash == std::string::npos ? first : text.substr(dash + 1);
  const Range range = {ParseInt(first, least, most), ParseInt(last, least, most)};
  if (range.first > range.last) throw std::invalid_argument(text + " is empty");
  return range;
}

std::vector<int> ParseNumbers(const std::string& text, int least, int most) {
  std::set<int> numbers;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, ',');) {
    const Range range = ParseRange(part, least, most);
    for (int number = range.first; number <= range.last; ++number) numbers.insert(number);
  }
  if (numbers.empty()) throw std::invalid_argument("no number is given");
  return {numbers.begin(), numbers.end()};
}

}  // namespace tools
