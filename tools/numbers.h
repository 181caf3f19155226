#pragma once

#include <string>
#include <vector>

namespace tools {

/// An inclusive range of whole numbers.
struct Range {
  int first;
  int last;
};

/// "A-B" or a single number, all from `least` to `most`. This and the next raise
/// `std::invalid_argument` for any other text.
Range ParseRange(const std::string& text, int least, int most);
/// "1,3,5-8", sorted, each number once.
std::vector<int> ParseNumbers(const std::string& text, int least, int most);

}  // namespace tools
