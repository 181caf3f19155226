#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends a fuzzer's run as a find when a promise does not hold.
inline void Demand(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "Broken promise: %s\n", promise);
  std::abort();
}
