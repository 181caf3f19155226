#pragma once

#include <windows.h>

#include <cstdlib>

namespace driver {

/// Runs the rounds of an attack, which get their numbers from 1 on: as many as its short form has,
/// or, where ATTACK_SECONDS is set, as many as begin in that time. Answers how many.
template <typename Round>
int RunRounds(int shortForm, const Round& round) {
  const char* seconds = std::getenv("ATTACK_SECONDS");
  const ULONGLONG end =
      GetTickCount64() + (seconds ? std::strtoull(seconds, nullptr, 10) : 0) * 1000;
  int begun = 0;
  while (seconds ? GetTickCount64() < end : begun < shortForm) round(++begun);
  return begun;
}

}  // namespace driver
