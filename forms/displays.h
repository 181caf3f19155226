#pragma once

#include <string>
#include <vector>

#include "forms/control.h"

/// Controls that show something or tick, and that the user does nothing with.
namespace forms {

/// Text that cannot be edited. An ampersand shows as itself. One that is part of a check box (the
/// row's buddy) is disabled with it, and a click on it is one on the box.
class Label : public Control {
 public:
  using Control::Control;

 protected:
  const wchar_t* WindowClass() const override { return WC_STATICW; }
  DWORD WindowStyle() const override;
  void OnCommand(WORD code) override;
};

/// A thin line that divides a form.
class Line : public Control {
 public:
  using Control::Control;

 protected:
  const wchar_t* WindowClass() const override { return WC_STATICW; }
  DWORD WindowStyle() const override { return SS_ETCHEDHORZ; }
};

/// A titled box around the controls that stand in it. Hidden or disabled, it hides or disables
/// them, whose own state stays as it is.
class Frame : public Control {
 public:
  using Control::Control;

 protected:
  const wchar_t* WindowClass() const override { return WC_BUTTONW; }
  DWORD WindowStyle() const override { return BS_GROUPBOX; }
};

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

/// A short silent clip that plays over and over, as large as its place has it. It is drawn when
/// messages run, and waits with the work that lets none run.
class Animation : public Control {
 public:
  using Control::Control;

  /// Opens a clip; false, with nothing shown, when it cannot be played.
  bool Open(const std::string& path);
  void Play();
  void Stop();

 protected:
  const wchar_t* WindowClass() const override { return WC_STATICW; }
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void Paint(HDC screen);

  std::vector<std::vector<unsigned char>> frames_;  ///< Bitmaps with their headers.
  std::size_t frame_ = 0;                           ///< The one that shows, from 0.
  UINT interval_ = 0;                               ///< Milliseconds.
};

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
