#pragma once

#include "forms/form.h"

namespace forms {

/// A form is at long work while this lives: the hourglass is over it, and keys, clicks and dropped
/// files are not for its controls. Its window can be moved, minimised and closed, and Esc asks the
/// work to stop. What was pressed and clicked meanwhile is gone afterwards as well: it was meant
/// for what the form showed before.
class Busy {
 public:
  explicit Busy(Form& form);
  ~Busy();
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

  /// Lets messages run; whether the work is to go on: the form is open, and Esc was not pressed.
  bool LetMessagesRun();

 private:
  friend class Form;
  friend bool TranslateForForm(MSG& message);

  /// Whether a message of the form is not to be handled.
  bool Drops(const MSG& message);

  Form& form_;
  bool stopped_ = false;
};

}  // namespace forms
