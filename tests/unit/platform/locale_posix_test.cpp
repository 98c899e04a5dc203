// A host's global C++ locale. Only on POSIX systems the library shares it.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <stdexcept>
#include <string>

#include "phyval/rounding.h"
#include "platform/locale.h"
#include "tests/support/global_locale.h"

namespace KelmoLibs::Localize {
namespace {

TEST(FormatUnderGlobalLocale, ReturnsNothingUnderTheClassicLocale) {
  EXPECT_EQ(FormatUnderGlobalLocale(1234567.89, 2), std::nullopt);
  const GlobalLocale classic(std::locale("C"));
  EXPECT_EQ(FormatUnderGlobalLocale(1234567.89, 2), std::nullopt);
}

TEST(FormatUnderGlobalLocale, FormatsLikeAStream) {
  const GlobalLocale grouped(LocaleGroupedByPoints());
  EXPECT_EQ(FormatUnderGlobalLocale(1234567.89, 2), L"1.234.567!89");
  EXPECT_EQ(FormatUnderGlobalLocale(-1234567.89, 1), L"-1.234.567!9");
  EXPECT_EQ(FormatUnderGlobalLocale(123, 0), L"123");
  EXPECT_EQ(FormatUnderGlobalLocale(0.5, 9), L"0!500000000");
}

class Unprintable : public std::num_put<wchar_t> {
  iter_type do_put(iter_type /*out*/, std::ios_base& /*stream*/, char_type /*fill*/,
                   double /*number*/) const override {
    throw std::domain_error("unprintable");
  }
};

TEST(FormatUnderGlobalLocale, PassesOnTheExceptionOfAFacet) {
  const GlobalLocale throwing(std::locale(std::locale::classic(), new Unprintable));
  EXPECT_THROW(FormatUnderGlobalLocale(1, 0), std::domain_error);
}

TEST(FormatUnderGlobalLocale, PrintsTheSameDigitsAsFixedText) {
  using Limits = std::numeric_limits<double>;
  for (const double number : {0.0, -0.0, 0.1, 2.5, -1234567.890625, 0.0009765625, 1e22, 1e300,
                              Limits::max(), Limits::min(), Limits::denorm_min()}) {
    for (int decimals = 0; decimals <= 9; ++decimals) {
      const std::wstring text = Phyval::FixedText({number, decimals, std::nan("")}, L'.');
      // Not the classic locale, but prints like it.
      const GlobalLocale other(std::locale(std::locale::classic(), new std::numpunct<wchar_t>));
      EXPECT_EQ(FormatUnderGlobalLocale(number, decimals), text);
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
