#pragma once

#include <memory>
#include <vector>

#include "platform/runtime_error.h"

namespace forms {

class Form;

/// Controls of one kind whose ids run on from a base: element i has the id base + i. The indices
/// need not start at 0 (a first index of 1 leaves the base id free).
template <typename T>
class ControlArray {
 public:
  ControlArray(Form& form, int base, int first, int last) : first_(first) {
    for (int i = first; i <= last; ++i) elements_.push_back(std::make_unique<T>(form, base + i));
  }

  /// The element with this index. An index outside is a RuntimeError.
  T& operator()(int index) const {
    if (index < first_ || index > last()) throw RuntimeError::SubscriptOutOfRange("ControlArray");
    return *elements_[static_cast<std::size_t>(index - first_)];
  }
  int first() const { return first_; }
  int last() const { return first_ + static_cast<int>(elements_.size()) - 1; }

 private:
  int first_;
  std::vector<std::unique_ptr<T>> elements_;
};

}  // namespace forms
