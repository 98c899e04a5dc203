// Compares numbers by their bits: 0 and -0 differ, and a NaN equals itself.
#pragma once

#include <gtest/gtest.h>

#include <iomanip>

#include "tests/support/bits.h"

/// For EXPECT_PRED_FORMAT2.
inline testing::AssertionResult SameBits(const char* actualText, const char* /*expectedText*/,
                                         double actual, double expected) {
  if (BitsOf(actual) == BitsOf(expected)) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure()
         << actualText << " is " << std::setprecision(17) << actual << " (" << std::hexfloat
         << actual << ") and not " << std::defaultfloat << std::setprecision(17) << expected << " ("
         << std::hexfloat << expected << ")";
}
