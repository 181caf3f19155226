#pragma once

#include <vector>

#include "forms/win32.h"

namespace forms {

/// Controls that Tab passes as one and among which the arrow keys move: left and right in reading
/// order, up and down to the nearest one of the next row that has any. Disabled ones are passed by.
class ArrowGroup {
 public:
  void Add(HWND member) { members_.push_back(member); }
  /// Tab stops at this member from now on.
  void SetStop(HWND member);
  /// Some members were enabled or disabled: Tab stops at one that can be used.
  void Refresh();
  /// The member that an arrow key leads to; null when the key leads nowhere or is another one.
  HWND Next(HWND from, WPARAM key) const;

 private:
  std::vector<HWND> InReadingOrder() const;

  std::vector<HWND> members_;
  HWND stop_ = nullptr;
};

}  // namespace forms
