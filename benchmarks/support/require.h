#pragma once

#include <cstdio>
#include <cstdlib>

namespace benchmarks {

/// Ends the program and prints `problem` if `condition` is false: wrong results are not timed.
inline void Require(bool condition, const char* problem) {
  if (!condition) {
    (void)std::fprintf(stderr, "%s\n", problem);
    std::exit(EXIT_FAILURE);
  }
}

}  // namespace benchmarks
