#pragma once

#include <windows.h>

#include <cstdlib>

namespace driver {

/// Counts the rounds of an attack: as many as its short form has, or, where ATTACK_SECONDS is set,
/// as many as begin in that time.
class Rounds {
 public:
  explicit Rounds(int shortForm) : shortForm_(shortForm) {
    if (const char* seconds = std::getenv("ATTACK_SECONDS"))
      end_ = GetTickCount64() + std::strtoull(seconds, nullptr, 10) * 1000;
  }

  /// Begins another round, if there is to be one.
  bool Next() {
    const bool goOn = end_ != 0 ? GetTickCount64() < end_ : begun_ < shortForm_;
    begun_ += goOn ? 1 : 0;
    return goOn;
  }
  /// Rounds begun so far.
  int begun() const { return begun_; }

 private:
  const int shortForm_;
  ULONGLONG end_ = 0;
  int begun_ = 0;
};

}  // namespace driver
