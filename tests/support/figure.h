#pragma once

#include <cstdio>

/// Prints a figure of an attack: "FIGURE 12 faults tried". `./attack` adds up those of one kind.
inline void PrintFigure(long long count, const char* what) {
  std::printf("FIGURE %lld %s\n", count, what);
  std::fflush(stdout);
}
