// to_string(), the factors of units and the runtime's locale, through the exports. CTest runs this
// program in several environments, which contain the user's settings (CMakeLists.txt). Variables
// tell it the user's separator and the locale that the host has chosen, if any.

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "kelmo_localizer.h"
#include "tests/support/global_locale.h"
#include "tests/support/test_platform.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string CurrentLocale() { return std::setlocale(LC_ALL, nullptr); }

class RegionalSettings : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(separator_.empty()) << "run this program by CTest: ctest -R regional_settings";
    const std::string chosen = Variable("KELMO_HOST_LOCALE");
    if (!chosen.empty()) {
      ASSERT_NE(std::setlocale(LC_ALL, chosen.c_str()), nullptr) << "there is no " << chosen;
    }
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }

  const std::wstring separator_ = [] {
    const std::string narrow = Variable("KELMO_SEPARATOR");
    return std::wstring(narrow.begin(), narrow.end());
  }();
};

TEST_F(RegionalSettings, DetermineTheSeparatorAndNothingElse) {
  EXPECT_EQ(Double(1234.5678, 0.01, 0, 10001).to_string(), L"1234" + separator_ + L"57");
  EXPECT_EQ(Double(-1234567.5, 0.05, 0, 10001).to_string(), L"-1234567" + separator_ + L"50");
  EXPECT_EQ(Double(1e22, 1, 0, 99999).to_string(), L"10000000000000000000000");
}

TEST_F(RegionalSettings, DoNotChangeTheLocaleOfTheHost) {
  const std::string before = CurrentLocale();
  (void)Double(1234.5678, 0.01, 0, 10001).to_string();
  EXPECT_EQ(CurrentLocale(), before);
  // With one category from another locale, the name lists all categories.
  std::setlocale(LC_ALL, "");
  ASSERT_NE(std::setlocale(LC_NUMERIC, "C"), nullptr);
  const std::string mixed = CurrentLocale();
  EXPECT_EQ(Double(0.5, 0.1, 0, 10001).to_string().size(), 3U);
  EXPECT_EQ(CurrentLocale(), mixed);
}

TEST_F(RegionalSettings, DoNotAffectTextWithAGivenSeparator) {
  EXPECT_EQ(Double(1234.5678, 0.01, 0, 10001).to_string(L','), L"1234,57");
  EXPECT_EQ(Double(1234.5678, 0.01, 0, 10001).to_string(L'.'), L"1234.57");
  EXPECT_EQ(Double(1234.5678, 0.01, 0, 10001).Return(), 1234.57);
}

// A host that sets its locale by name changes the runtime's locale and the global C++ locale.
TEST_F(RegionalSettings, OfTheGlobalLocaleAffectTextWithAGivenSeparatorOnLinux) {
  if (!librarySharesTheGlobalLocale) {
    GTEST_SKIP() << "the library has its own global locale";
  }
  Double value(1234567.891, 0.01, 0, 10001);
  const std::wstring text = value.to_string();
  const GlobalLocale german(std::locale("de_DE.UTF-8"));
  EXPECT_EQ(value.to_string(L';'), L"1;234;567,89");
  EXPECT_EQ(value.to_string(L'.'), L"1.234.567,89");
  EXPECT_EQ(value.to_string().size(), text.size());
}

// The decimal point of the host's locale counts, not the user's. The library does not switch it.
TEST_F(RegionalSettings, OfTheHostDetermineHowFactorsAreRead) {
  const std::string point = std::localeconv()->decimal_point;
  EXPECT_EQ(Init0(L"no such folder"), 0);
  ASSERT_NE(Double(1, 0, 0, 40002).unit, nullptr);
  EXPECT_EQ(Double(1, 0, 0, 40002).unit->factor, point == "," ? 57.0 : 57.29577951308232);
  EXPECT_EQ(Double(1, 0, 0, 10002).unit->factor, point == "," ? 0.0 : 0.0273);
  EXPECT_EQ(Double(1, 0, 0, 10001).unit->factor, 1.0);
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(Init0(L"no such folder"), 0);
  EXPECT_EQ(Double(1, 0, 0, 40002).unit->factor, 57.29577951308232);
}

}  // namespace
