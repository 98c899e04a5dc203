#include "host/double_double.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/same_bits.h"

namespace {

using namespace KelmoLibs::Host;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Row {
  const char* name;
  DoubleDouble actual;
  DoubleDouble expected;
};

template <std::size_t size>
void Check(const Row (&rows)[size]) {
  for (const Row& row : rows) {
    EXPECT_PRED_FORMAT2(SameBits, row.actual.high, row.expected.high) << row.name;
    EXPECT_PRED_FORMAT2(SameBits, row.actual.low, row.expected.low) << row.name;
  }
}

TEST(DoubleDouble, SumsAreExact) {
  const Row rows[] = {
      {"nothing is lost", ExactSum(1, 2), {3, 0}},
      {"the smaller one is lost", ExactSum(1, 0x1p-60), {1, 0x1p-60}},
      {"the smaller one stands first", ExactSum(0x1p-60, 1), {1, 0x1p-60}},
      {"a tie", ExactSum(0x1p53, 1), {0x1p53, 1}},
      {"a tie that is rounded up", ExactSum(0x1p53 + 2, 1), {0x1p53 + 4, -1}},
      {"the difference of neighbours", ExactSum(1 + 0x1p-52, -1), {0x1p-52, 0}},
      {"subnormal numbers", ExactSum(0x1p-1074, 0x1p-1074), {0x1p-1073, 0}},
  };
  Check(rows);
}

TEST(DoubleDouble, ProductsAreExact) {
  const Row rows[] = {
      {"nothing is lost", ExactProduct(3, 5), {15, 0}},
      {"a tenth is not a tenth", ExactProduct(0.1, 10), {1, 0x1p-54}},
      {"the last bit is lost",
       ExactProduct(0x1p27 + 1, 0x1p27 + 1),
       {0x1p54 + 0x1p28, 1}},  // and 1
      {"all low bits", ExactProduct(1 + 0x1p-52, 1 + 0x1p-52), {1 + 0x1p-51, 0x1p-104}},
      {"a negative number", ExactProduct(-0.1, 10), {-1, -0x1p-54}},
      {"zero", ExactProduct(0, 0.1), {0, 0}},
  };
  Check(rows);
}

TEST(DoubleDouble, HasTwiceTheDigitsOfADouble) {
  const DoubleDouble third = {0x1.5555555555555p-2, 0x1.5555555555555p-56};
  const Row rows[] = {
      {"one divided by three", Quotient({1, 0}, {3, 0}), third},
      {"five divided by nine",
       Quotient({5, 0}, {9, 0}),
       {0x1.1c71c71c71c72p-1, -0x1.c71c71c71c71cp-56}},
      {"a quotient without a rest", Quotient({15, 0}, {5, 0}), {3, 0}},
      {"a sum of both parts", Sum({1, 0x1p-60}, {2, 0x1p-60}), {3, 0x1p-59}},
      {"three thirds", Product(third, 3), {1, 0}},
      {"low parts that are larger than the rest of the high ones",
       Sum({1, 0x1p-54}, {-1, 0x1p-54}),
       {0x1p-53, 0}},
  };
  Check(rows);
}

TEST(DoubleDouble, SumIsRoundedToTheOddNeighbour) {
  EXPECT_EQ(SumRoundedToOdd(1, 2), 3) << "exact";
  EXPECT_EQ(SumRoundedToOdd(1, 0x1p-60), 1 + 0x1p-52) << "one is even: upwards";
  EXPECT_EQ(SumRoundedToOdd(1, -0x1p-60), 1 - 0x1p-53) << "one is even: downwards";
  EXPECT_EQ(SumRoundedToOdd(1 + 0x1p-52, 0x1p-60), 1 + 0x1p-52) << "odd already";
  EXPECT_EQ(SumRoundedToOdd(-1, -0x1p-60), -1 - 0x1p-52) << "a negative number";
}

// Two roundings, after the product and after the sum, give the neighbour of the right result.
TEST(DoubleDouble, MultiplyAddRoundsOnce) {
  struct Case {
    const char* name;
    double factor;
    double x;
    double offset;
    double expected;
  };
  const Case cases[] = {
      {"a sum that is rounded up", 0x1.451eb851eb852p+1, 0x1.1811cab1945b8p+3, 0x1.3333333333333p-2,
       0x1.687cfedc67ef1p+4},
      {"a sum that is rounded down", 0x1.999999999999ap-4, -0x1.511c9a71450d0p+5,
       0x1.3333333333333p-2, -0x1.f4fa90b53b481p+1},
      {"a difference", 0x1.ccccccccccccdp+0, 0x1.3321f4cf2c778p+4, -0x1.0000000000000p+5,
       0x1.46b5c540e6b8fp+1},
  };
  for (const Case& row : cases) {
    EXPECT_PRED_FORMAT2(SameBits, MultiplyAdd({row.factor, 0}, row.x, {row.offset, 0}),
                        row.expected)
        << row.name;
    EXPECT_NE(row.factor * row.x + row.offset, row.expected) << row.name << ": two roundings";
  }
  EXPECT_EQ(MultiplyAdd({1, 0}, 0x1p53, {1, 0x1p-60}), 0x1p53 + 2) << "the low part decides a tie";
  EXPECT_EQ(MultiplyAdd({1, 0}, 0x1p53, {1, -0x1p-60}), 0x1p53) << "and in the other direction";
  EXPECT_EQ(MultiplyAdd({1, 0}, 0x1p53, {1, 0}), 0x1p53) << "a tie goes to the even neighbour";
  EXPECT_FALSE(std::isfinite(MultiplyAdd({1, 0}, kInfinity, {1, 0})));
}

}  // namespace
