#pragma once

#include <optional>
#include <string>
#include <vector>

#include "forms/long_work.h"
#include "forms/text_box.h"
#include "storage/pacer.h"

/// The look and the patience of a window that reads a recording while this lives. It takes no input
/// but Esc, which stops the reading; when that takes longer than a moment, a text box and the
/// taskbar show how far it is, and controls that wait for its end are disabled.
class Reading {
 public:
  /// `waiting` are disabled; `passes` times all blocks are read.
  Reading(forms::Form& form, platform::Clock& clock, forms::TextBox& shownIn,
          std::vector<forms::Control*> waiting, int passes);
  ~Reading();
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  /// The pacing of the next pass.
  Pacer NextPass();

 private:
  bool Breathe(std::int32_t done, std::int32_t total);
  void Appear();
  void ShowPercent(int percent);

  forms::Busy busy_;
  forms::Form& form_;
  platform::Clock& clock_;
  forms::TextBox& shownIn_;
  std::vector<forms::Control*> waiting_;
  int passes_;
  int pass_ = 0;
  std::chrono::steady_clock::duration showNext_;  ///< Not before this time.
  int percent_ = -1;                              ///< Shown last.

  // While it shows.
  std::optional<forms::TaskbarProgress> taskbar_;
  std::string formerText_;
  forms::Control* formerFocus_ = nullptr;
};
