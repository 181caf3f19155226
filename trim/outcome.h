#pragma once

#include <stdexcept>
#include <string>

namespace trim {

/// How the program ends; the value is its exit code.
enum class Outcome {
  kSaved = 0,
  kNotSaved = 1,
  kWrongUse = 2,
  kDamaged = 3,         ///< Saved, but damage kept something out.
  kNothingInRange = 4,  ///< No file, since the recording holds nothing of the time range.
};

/// Why nothing was saved, in words for the user.
class Refusal : public std::runtime_error {
 public:
  explicit Refusal(const std::string& why, Outcome outcome = Outcome::kNotSaved)
      : runtime_error(why), outcome_(outcome) {}
  Outcome outcome() const { return outcome_; }

 private:
  Outcome outcome_;
};

}  // namespace trim
