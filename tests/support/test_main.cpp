#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/support/random_numbers.h"
#include "tests/support/test_platform.h"

std::uint64_t randomSeed = 20261120;

namespace {

std::uint64_t givenRounds = 0;  // not given

bool ReadNumber(const char* argument, const char* name, std::uint64_t& number) {
  const std::size_t length = std::strlen(name);
  if (std::strncmp(argument, name, length) != 0) {
    return false;
  }
  number = std::strtoull(argument + length, nullptr, 10);
  return true;
}

}  // namespace

std::uint64_t Rounds(std::uint64_t defaultRounds) {
  return givenRounds != 0 ? givenRounds : defaultRounds;
}

// Arguments beside those of GoogleTest: --seed=N for random tests, and --rounds=N for their length.
int main(int argumentCount, char** arguments) {
  TurnOffErrorDialogs();
  testing::InitGoogleTest(&argumentCount, arguments);
  for (int i = 1; i < argumentCount; ++i) {
    if (!ReadNumber(arguments[i], "--seed=", randomSeed) &&
        !ReadNumber(arguments[i], "--rounds=", givenRounds)) {
      std::printf("unknown argument: %s\n", arguments[i]);
      return 2;
    }
  }
  return RUN_ALL_TESTS();
}
