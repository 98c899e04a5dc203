#include <gtest/gtest.h>

#include "tests/support/test_platform.h"

int main(int argumentCount, char** arguments) {
  TurnOffErrorDialogs();
  testing::InitGoogleTest(&argumentCount, arguments);
  return RUN_ALL_TESTS();
}
