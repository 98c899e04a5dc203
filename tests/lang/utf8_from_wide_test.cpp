// Wide texts of the library as UTF-8.
#include "lang/unicode/utf8_from_wide.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Lang {
namespace {

TEST(Utf8FromWide, GivesTheCharacters) {
  EXPECT_EQ(Utf8FromWide(L""), "");
  EXPECT_EQ(Utf8FromWide(L"a\u00E9\u20AC\uFFFF"), "a\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBF");
  EXPECT_EQ(Utf8FromWide(L"\U00010000z\U0010FFFF"), "\xF0\x90\x80\x80z\xF4\x8F\xBF\xBF");
}

TEST(Utf8FromWide, JoinsSurrogatePairsOnEverySystem) {
  const wchar_t pair[] = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00), L'z', L'\0'};
  EXPECT_EQ(Utf8FromWide(pair), "\xF0\x9F\x98\x80z");
}

}  // namespace
}  // namespace KelmoLibs::Lang
