#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tools {

/// One option of a tool. An option without a value name is a switch.
struct Option {
  std::string name;  ///< With its two dashes.
  std::string value;
  std::string help;
};

/// An inclusive range of whole numbers.
struct Range {
  int first;
  int last;
};

/// Reads "A-B" or a single number. A mistake raises `std::invalid_argument` with `name` in it.
Range ParseRange(const std::string& name, const std::string& text, int least, int most);

/// The command line of a tool. A mistake of the user's raises `std::invalid_argument`.
class CommandLine {
 public:
  /// Reads the arguments. An option may be given more than once.
  CommandLine(int argc, char** argv, const std::vector<Option>& options);

  /// The arguments that are no options, in order.
  const std::vector<std::string>& Arguments() const { return arguments_; }
  bool Has(const std::string& name) const { return values_.count(name) > 0; }
  /// The last value given, or the fallback.
  std::string Text(const std::string& name, const std::string& fallback) const;
  std::vector<std::string> All(const std::string& name) const;
  /// A whole number from `least` to `most`.
  std::int64_t Number(const std::string& name, std::int64_t fallback, std::int64_t least,
                      std::int64_t most) const;
  double Decimal(const std::string& name, double fallback) const;
  /// "A-B" or a single number.
  Range NumberRange(const std::string& name, Range fallback, int least, int most) const;
  /// "1,3,5-8".
  std::vector<int> Numbers(const std::string& name, const std::string& fallback, int least,
                           int most) const;

 private:
  std::map<std::string, std::vector<std::string>> values_;
  std::vector<std::string> arguments_;
};

/// The help of some options, one line or more each.
std::string HelpText(const std::vector<Option>& options);

}  // namespace tools
