#include "forms/arrow_group.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace forms {
namespace {

POINT PlaceOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  return {place.left, place.top};
}

/// The first of the row that lies next above or beneath, `way` being -1 or 1, nearest in column.
HWND InNextRow(const std::vector<HWND>& members, HWND from, int way) {
  const POINT start = PlaceOf(from);
  const auto distance = [&](HWND member) {
    const POINT place = PlaceOf(member);
    return std::make_tuple((place.y - start.y) * way, std::abs(place.x - start.x));
  };
  HWND next = nullptr;
  for (const HWND member : members)
    if (std::get<0>(distance(member)) > 0 && (!next || distance(member) < distance(next)))
      next = member;
  return next;
}

}  // namespace

void ArrowGroup::SetStop(HWND member) {
  stop_ = member;
  Refresh();
}

void ArrowGroup::Refresh() {
  if (!stop_ || !IsWindowEnabled(stop_)) {
    const auto usable = std::ranges::find_if(members_, IsWindowEnabled);
    stop_ = usable == members_.end() ? nullptr : *usable;
  }
  for (const HWND member : members_) {
    const LONG_PTR style = GetWindowLongPtrW(member, GWL_STYLE);
    const LONG_PTR wanted = member == stop_ ? style | WS_TABSTOP : style & ~WS_TABSTOP;
    if (wanted != style) SetWindowLongPtrW(member, GWL_STYLE, wanted);
  }
}

std::vector<HWND> ArrowGroup::InReadingOrder() const {
  std::vector<HWND> usable;
  std::ranges::copy_if(members_, std::back_inserter(usable), IsWindowEnabled);
  std::ranges::sort(usable, {}, [](HWND member) {
    const POINT place = PlaceOf(member);
    return std::make_tuple(place.y, place.x);
  });
  return usable;
}

HWND ArrowGroup::Next(HWND from, WPARAM key) const {
  const std::vector<HWND> members = InReadingOrder();
  const auto at = std::ranges::find(members, from);
  if (at == members.end()) return nullptr;
  switch (key) {
    case VK_LEFT:
      return at == members.begin() ? members.back() : *(at - 1);
    case VK_RIGHT:
      return at + 1 == members.end() ? members.front() : *(at + 1);
    case VK_UP:
      return InNextRow(members, from, -1);
    case VK_DOWN:
      return InNextRow(members, from, 1);
    default:
      return nullptr;
  }
}

}  // namespace forms
