#include "host/unit_number.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/same_bits.h"

namespace {

using namespace KelmoLibs::Host;

// The low parts are those of the exact numbers, rounded to double.
TEST(UnitNumber, HasTheDigitsBehindThoseOfADouble) {
  struct Row {
    const char* name;
    const char* text;
    double high;
    double low;
  };
  const Row rows[] = {
      // Decimal numbers
      {"an integer", "1000", 1000, 0},
      {"zero", "0", 0, 0},
      {"minus zero", "-0.0", -0.0, 0},
      {"no digit behind the point", "5.", 5, 0},
      {"no digit in front of the point", ".5", 0.5, 0},
      {"zeroes in front", "007.50", 7.5, 0},
      {"a tenth", "0.1", 0x1.999999999999ap-4, -0x1.999999999999ap-58},
      {"a negative tenth", "-0.1", -0x1.999999999999ap-4, 0x1.999999999999ap-58},
      {"an inch", "0.0254", 0x1.a027525460aa6p-6, 0x1.30be0ded288cep-60},
      {"a negative exponent", "1e-6", 0x1.0c6f7a0b5ed8dp-20, 0x1.b5a63f9a49c2cp-75},
      {"a positive exponent", "25.4E+3", 25400, 0},
      {"an exponent without a sign", "254e2", 25400, 0},
      {"eighteen digits", "123456789012345678", 0x1.b69b4ba630f35p+56, -2},
      {"the largest power that is a double", "1e22", 1e22, 0},
      {"the smallest of its reciprocals", "1e-22", 0x1.e392010175ee6p-74, -0x1.a7566d9cba769p-128},

      // Without a low part
      {"nineteen digits", "0.1234567890123456789", 0x1.f9add3746f65fp-4, 0},
      {"a larger power", "1e23", 0x1.52d02c7e14af6p+76, 0},
      {"a smaller power", "1e-23", 0x1.82db34012b251p-77, 0},
      {"zero with the least exponent", "0.0e-2147483648", 0, 0},
      {"zero with the largest exponent", "0e2147483647", 0, 0},
      {"zero with an exponent that is no integer of 32 bits", "0e-99999999999", 0, 0},

      // Fractions
      {"five ninths", "5/9", 0x1.1c71c71c71c72p-1, -0x1.c71c71c71c71cp-56},
      {"decimals in a fraction", "2298.35/9", 0x1.febe93e93e93fp+7, -0x1.b05b05b05b05bp-47},
      {"a fraction of fractions", "0.1/0.3", 0x1.5555555555555p-2, 0x1.5555555555555p-56},
      {"a fraction that is an integer", "-6/-2", 3, 0},
      {"a fraction that is 0", "0/7", 0, 0},
      {"numbers too large for more digits", "1e308/3", 1e308 / 3, 0},
  };
  for (const Row& row : rows) {
    const auto number = ReadUnitNumber(row.text);
    ASSERT_TRUE(number) << row.name;
    EXPECT_PRED_FORMAT2(SameBits, number->high, row.high) << row.name;
    EXPECT_NEAR(number->low, row.low, std::abs(row.low) * 0x1p-50) << row.name;
  }
}

TEST(UnitNumber, IsNothingElse) {
  const char* const texts[] = {
      "",      "-",      ".",       "-.",   "e5",   "1e",    "1e+",   "1e+-5", "+1",
      "--1",   "1,5",    "1 ",      " 1",   "1x",   "0x10",  "inf",   "-inf",  "nan",
      "1e400", "-1e400", "1/",      "/1",   "1/0",  "1/-0",  "1//2",  "1/2/3", "1/ 2",
      "1/inf", "1e-400", "1/1e400", "1..5", "1.5.", "5/9e-", "1/nan", "1e5e5", "1e5.5",
  };
  for (const char* const text : texts) {
    EXPECT_FALSE(ReadUnitNumber(text)) << '"' << text << '"';
  }
  EXPECT_FALSE(ReadUnitNumber(std::string("1\0", 2))) << "a zero behind it";
  EXPECT_FALSE(ReadUnitNumber("1e308/1e-10")) << "a quotient that is too large";
}

}  // namespace
