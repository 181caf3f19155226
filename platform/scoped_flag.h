#pragma once

/// Sets a flag while it lives.
template <typename Flag = bool>
class ScopedFlag {
 public:
  explicit ScopedFlag(Flag& flag) : flag_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = false; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  Flag& flag_;
};
