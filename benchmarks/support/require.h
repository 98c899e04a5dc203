#pragma once

#include <cstdio>
#include <cstdlib>

namespace benchmarks {

/// Ends the program with `problem` unless `condition` holds: what is wrong is not timed.
inline void Require(bool condition, const char* problem) {
  if (!condition) {
    (void)std::fprintf(stderr, "%s\n", problem);
    std::exit(EXIT_FAILURE);
  }
}

}  // namespace benchmarks
