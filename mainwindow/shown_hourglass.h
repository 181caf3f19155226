#pragma once

#include "forms/form.h"
#include "forms/input.h"

/// Shows the hourglass over a form while it lives. What is clicked and typed meanwhile is dropped:
/// it was meant for what the form showed before, and a second click on the source's button would
/// throw away the recording that was just read.
class ShownHourglass {
 public:
  explicit ShownHourglass(forms::Form& form) : form_(form) { form_.SetHourglass(true); }
  ~ShownHourglass() {
    forms::DiscardPendingInput();
    form_.SetHourglass(false);
  }
  ShownHourglass(const ShownHourglass&) = delete;
  ShownHourglass& operator=(const ShownHourglass&) = delete;

 private:
  forms::Form& form_;
};
