#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "save/time_left.h"
#include "trim/system.h"

namespace trim {

/// A bar on standard error that shows how far the work is, where that is a terminal. The line is
/// empty again when this is gone.
class ProgressBar {
 public:
  /// `label` names the work: "Saving".
  ProgressBar(const System& system, std::string label)
      : system_(system), label_(std::move(label)) {}
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Shows that `done` of `total` parts are done, no oftener than a person can see.
  void Show(std::int32_t done, std::int32_t total);

 private:
  const System& system_;
  std::string label_;
  TimeLeft timeLeft_;
  std::chrono::milliseconds showNext_{};  ///< Not before this time.
  int width_ = 0;                         ///< Of what is shown, columns.
};

}  // namespace trim
