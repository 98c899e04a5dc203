#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/support/random_numbers.h"
#include "tests/support/test_platform.h"

std::uint64_t randomSeed = 20261120;

// Beside GoogleTest's own arguments: --seed=N, for tests with random numbers.
int main(int argumentCount, char** arguments) {
  TurnOffErrorDialogs();
  testing::InitGoogleTest(&argumentCount, arguments);
  for (int i = 1; i < argumentCount; ++i) {
    if (std::strncmp(arguments[i], "--seed=", 7) != 0) {
      std::printf("unknown argument: %s\n", arguments[i]);
      return 2;
    }
    randomSeed = std::strtoull(arguments[i] + 7, nullptr, 10);
  }
  return RUN_ALL_TESTS();
}
