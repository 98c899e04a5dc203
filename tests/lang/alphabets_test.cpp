#include "lang/unicode/alphabets.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Lang {
namespace {

TEST(Alphabets, TellForeignLetters) {
  const Alphabet polish("pl");
  EXPECT_EQ(polish.KindOfLetters(), Alphabet::Kind::kLatin);
  EXPECT_FALSE(polish.IsForeign(U'\u0142'));  // l with stroke
  EXPECT_TRUE(polish.IsForeign(U'\u0159'));   // r with caron
  EXPECT_TRUE(polish.IsForeign(U'\u1EC7'));   // of Vietnamese
  EXPECT_TRUE(polish.IsForeign(U'\u0431'));   // Cyrillic
  EXPECT_FALSE(polish.IsForeign(U'\u03B1'));  // Greek
  EXPECT_FALSE(polish.IsForeign(U'a'));
  EXPECT_FALSE(polish.IsForeign(U'\u4E00'));
  const Alphabet russian("ru");
  EXPECT_EQ(russian.KindOfLetters(), Alphabet::Kind::kCyrillic);
  EXPECT_FALSE(russian.IsForeign(U'\u0451'));
  EXPECT_TRUE(russian.IsForeign(U'\u0456'));
  EXPECT_FALSE(russian.IsForeign(U'\u0159'));  // names keep their Latin letters
}

TEST(Alphabets, WithoutATableHaveNoForeignLetters) {
  EXPECT_EQ(Alphabet("").KindOfLetters(), Alphabet::Kind::kUnknown);
  EXPECT_EQ(Alphabet("xx").KindOfLetters(), Alphabet::Kind::kUnknown);
  EXPECT_EQ(Alphabet("ja").KindOfLetters(), Alphabet::Kind::kOther);
  EXPECT_FALSE(Alphabet("xx").IsForeign(U'\u0159'));
  EXPECT_FALSE(Alphabet("ja").IsForeign(U'\u0159'));
}

TEST(Alphabets, FindForeignLettersInTexts) {
  struct Row {
    const char* name;
    const char* text;
    bool expected;
  };
  const Row rows[] = {
      {"empty", "", false},
      {"ASCII", "plik", false},
      {"own letters", u8"żółć", false},
      {"foreign letter at the end", u8"soubor ř", true},
      {"foreign letter with three bytes", u8"xệ", true},
      {"punctuation", u8"„plik” – …", false},
      {"full-width form", u8"plik：", false},
      {"Chinese", u8"文", true},
      {"Thai", u8"ไฟล์", true},
      {"emoji", u8"\U0001F600", false},
  };
  const Alphabet polish("pl");
  for (const Row& row : rows) {
    EXPECT_EQ(polish.MayHaveForeign(row.text), row.expected) << row.name;
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
