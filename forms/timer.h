#pragma once

#include "forms/control.h"

namespace forms {

/// Raises kTimer each time its row's interval has passed while it is enabled and its form's window
/// is shown; not again while its own handler runs.
class Timer : public Control {
 public:
  using Control::Control;

  /// Starts or stops the timer.
  void SetEnabled(bool enabled) override;

 protected:
  const wchar_t* WindowClass() const override { return nullptr; }
  void FormShown() override { Arm(); }
  void OnTimer() override;

 private:
  void Arm();
  bool ticking_ = false;
};

}  // namespace forms
