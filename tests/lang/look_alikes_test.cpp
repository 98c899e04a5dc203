// Keys that look alike have the same form; others have not.
#include "lang/unicode/look_alikes.h"

#include <gtest/gtest.h>

#include "lang/unicode/blanks.h"
#include "lang/unicode/hex.h"

namespace KelmoLibs::Lang {
namespace {

struct Row {
  const char* name;
  const char* a;
  const char* b;
  bool areAlike;
};

TEST(LookAlikeForm, IsEqualForKeysThatLookAlike) {
  const Row rows[] = {
      {"the same", "menu.open", "menu.open", true},
      {"other letters", "menu.open", "menu.oqen", false},
      {"case", "menu.open", "Menu.Open", true},
      {"Cyrillic o", "menu.open", "menu.\u043Epen", true},
      {"Cyrillic capital", "Help", "\u041Delp", true},
      {"Greek nu", "move", "mo\u03BDe", true},
      {"Greek lambda looks like no Latin letter", "l", "\u03BB", false},
      {"full width", "ok", "\uFF4F\uFF4B", true},
      {"hyphen", "a-b", "a\u2010b", true},
      {"composed", "caf\u00E9", "cafe\u0301", true},
      {"without the accent", "caf\u00E9", "cafe", false},
      {"two marks", "\u1EA5", "a\u0302\u0301", true},
      {"Cyrillic short i", "\u0439", "\u0438\u0306", true},
      {"zero width", "ab", "a\u200Bb", true},
      {"soft hyphen", "ab", "a\u00ADb", true},
      {"no-break space is no invisible character", "ab", "a\u00A0b", false},
      {"bytes that are not UTF-8", "a\xFF", "a\xFE", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(LookAlikeForm(row.a) == LookAlikeForm(row.b), row.areAlike) << row.name;
  }
}

TEST(Decompose, GivesLettersAndMarks) {
  EXPECT_EQ(Decompose("\u00C5\u1EA5\u0451x\xFF"), "A\u030Aa\u0302\u0301\u0435\u0308x\xFF");
}

TEST(CodePointName, HasFourDigitsAtLeast) {
  EXPECT_EQ(CodePointName(0xA0), "U+00A0");
  EXPECT_EQ(CodePointName(0x1F600), "U+1F600");
}

}  // namespace
}  // namespace KelmoLibs::Lang
