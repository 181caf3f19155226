#pragma once

#include <memory>
#include <string>

#include "platform/platform.h"

namespace trim {

/// The system that the program runs on: one lives from its start to its end.
class System {
 public:
  /// From now on a wish to end the program is noticed (Ctrl+C, an end from outside, a closed
  /// console) instead of followed, unless whoever started it wants such wishes ignored. What is
  /// being made lies in the folder of `target`.
  explicit System(const std::string& target);
  ~System();
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  /// What the save needs of it. Dates are the same texts everywhere.
  platform::Core& core() const;
  /// Whether the program was wished to end.
  bool IsCancelled() const;
  /// Columns of the terminal that standard error goes to; 0 when that is none.
  int Columns() const;
  /// Keeps the machine awake until the program's end.
  void KeepAwake();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace trim
