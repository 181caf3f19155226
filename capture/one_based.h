#pragma once

#include <cstddef>
#include <vector>

#include "platform/runtime_error.h"

/// An array whose first element has the index 1. An index outside raises a `RuntimeError`.
template <typename T>
class OneBased {
 public:
  /// Gives the array elements 1 to `count`, all of them zero.
  void Redimension(std::size_t count) { elements_.assign(count, T{}); }

  /// Highest index; 0 when the array is empty.
  int UpperBound() const { return static_cast<int>(elements_.size()); }

  T& operator[](int index) { return elements_[Checked(index)]; }
  const T& operator[](int index) const { return elements_[Checked(index)]; }

  /// The elements in memory, from index 1 on.
  T* data() { return elements_.data(); }
  const T* data() const { return elements_.data(); }

 private:
  std::size_t Checked(int index) const {
    if (index < 1 || static_cast<std::size_t>(index) > elements_.size())
      throw RuntimeError::SubscriptOutOfRange("OneBased");
    return static_cast<std::size_t>(index) - 1;
  }

  std::vector<T> elements_;
};
