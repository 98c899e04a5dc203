// Quantities in formats of the library fmt.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <iterator>
#include <kelmo/kelmo_fmt.hpp>
#include <string>

namespace {

constexpr int kMillimetre = 10003;

kelmo::Quantity Length(double number, double tolerance) {
  kelmo::UnitsLoader loader;
  loader.add({kMillimetre, 0.001, "mm", "millimetre"});
  return {loader.finish(), number, kMillimetre, tolerance};
}

TEST(KelmoFaceFmt, WritesTheTextOfAQuantity) {
  EXPECT_EQ(fmt::format("{}", Length(12.5, 0.1)), "12.5\u00A0mm");
  EXPECT_EQ(fmt::format("{0} and {0}", Length(1.5625, 0)), "1.5625\u00A0mm and 1.5625\u00A0mm");
}

TEST(KelmoFaceFmt, TakesTheFormatsOfStrings) {
  const kelmo::Quantity length = Length(12.5, 0.1);
  EXPECT_EQ(fmt::format("{:10}|", length), "12.5\u00A0mm   |");
  EXPECT_EQ(fmt::format("{:>10}|", length), "   12.5\u00A0mm|");
  EXPECT_EQ(fmt::format("{:*^{}}|", length, 11), "**12.5\u00A0mm**|");
  EXPECT_EQ(fmt::format("{:.>8}|", length), ".12.5\u00A0mm|");
  for (const char* const precision : {"{:.4}", "{:10.4}"}) {
    EXPECT_THROW((void)fmt::format(fmt::runtime(precision), length), fmt::format_error);
  }
  EXPECT_THROW((void)fmt::format(fmt::runtime("{:.{}}"), length, 4), fmt::format_error);
  EXPECT_EQ(fmt::format("{:s}", length), "12.5\u00A0mm");
  EXPECT_THROW((void)fmt::format(fmt::runtime("{:.1f}"), length), fmt::format_error);
}

TEST(KelmoFaceFmt, WritesToAnyOutput) {
  std::string text = "Head: ";
  fmt::format_to(std::back_inserter(text), "{}", Length(-2, 1));
  EXPECT_EQ(text, "Head: -2\u00A0mm");
}

TEST(KelmoFaceFmt, ThrowsWhatPrintingThrows) {
  const kelmo::Quantity length = Length(1, 1);
  EXPECT_THROW((void)fmt::format(
                   "{}", kelmo::Quantity(length.units(), kelmo_quantity{1, 1, 0, kMillimetre, 1})),
               kelmo::Error);
}

}  // namespace
