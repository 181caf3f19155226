#pragma once

#include <windows.h>

#include <string>

namespace driver {

/// How long a condition may take to come true, in milliseconds: far longer than ever needed, so
/// that a busy machine or a slow disk fails no test.
inline constexpr DWORD kPatience = 120'000;

/// Raises an error that says what did not come, and leaves a picture of the screen.
[[noreturn]] void RaiseTimeout(const std::string& what);

/// Polls a condition until it holds and answers what it answered. Raises when it never does.
template <typename Condition>
auto Await(const std::string& what, Condition condition) {
  const ULONGLONG deadline = GetTickCount64() + kPatience;
  for (;;) {
    if (auto result = condition()) return result;
    if (GetTickCount64() > deadline) RaiseTimeout(what);
    Sleep(2);
  }
}

}  // namespace driver
