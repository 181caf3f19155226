#pragma once

#include "forms/control.h"

namespace forms {

/// A bar that fills from 0 to 100.
class ProgressBar : public Control {
 public:
  using Control::Control;

  int Value() const { return value_; }
  /// Sets the percentage, brought into 0 to 100; shows it at once.
  void SetValue(int percent);

 protected:
  const wchar_t* WindowClass() const override { return PROGRESS_CLASSW; }
  DWORD WindowStyle() const override { return PBS_SMOOTH; }
  void Created() override;

 private:
  void ShowValue();
  int value_ = 0;
};

/// A short silent clip that plays over and over.
class Animation : public Control {
 public:
  using Control::Control;

  /// Opens a clip; false, with nothing shown, when it cannot be played.
  bool Open(const std::string& path);
  void Play();
  void Stop();

 protected:
  const wchar_t* WindowClass() const override { return ANIMATE_CLASSW; }
  DWORD WindowStyle() const override { return ACS_CENTER | ACS_TRANSPARENT; }
};

}  // namespace forms
