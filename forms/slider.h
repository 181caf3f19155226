#pragma once

#include <cstdint>

#include "forms/control.h"

namespace forms {

/// A slider over whole numbers of 32 bits, both ends included.
/// Events: kScroll for each of the user's own moves, then kChange for every change of the value,
/// also for the program's own and for a new end that pulls the value in. A kScroll handler that
/// refuses a move calls `EndDrag` before it shows a message.
class Slider : public Control {
 public:
  using Control::Control;

  std::int32_t Value() const { return value_; }
  /// Sets the value, brought into the range.
  void SetValue(std::int32_t value);
  std::int32_t Min() const { return min_; }
  std::int32_t Max() const { return max_; }
  void SetMax(std::int32_t max);
  /// Ends the mouse's grip on the thumb, so that what the mouse does next moves nothing.
  void EndDrag();
  /// The text beside the thumb while it is dragged, and where the mouse rests on the slider; also
  /// what a screen reader says for its value.
  void SetToolTip(const std::string& text) override;

 protected:
  const wchar_t* WindowClass() const override { return TRACKBAR_CLASSW; }
  DWORD WindowStyle() const override { return TBS_HORZ | TBS_NOTICKS; }
  void Created() override;
  void Destroying() override;
  void OnScroll(WORD code) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void SetRange(std::int32_t min, std::int32_t max);
  void ChangeTo(std::int32_t value);
  void ShowTip();
  void HideTip();

  HWND tip_ = nullptr;
  std::int32_t min_ = 1;
  std::int32_t max_ = 100;
  std::int32_t value_ = 1;
};

}  // namespace forms
