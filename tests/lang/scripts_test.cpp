// Scripts of letters, and letters that look alike.
#include "lang/unicode/scripts.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Lang {
namespace {

TEST(Scripts, ACharacterHasAScriptIfItIsALetterOrAMark) {
  struct Row {
    const char* name;
    char32_t character;
    Script script;
  };
  const Row rows[] = {
      {"at sign, before the letters", '@', Script::kNone},
      {"first capital", 'A', Script::kLatin},
      {"last capital", 'Z', Script::kLatin},
      {"bracket, behind the capitals", '[', Script::kNone},
      {"first small letter", 'a', Script::kLatin},
      {"last small letter", 'z', Script::kLatin},
      {"brace, behind the small letters", '{', Script::kNone},
      {"digit", '7', Script::kNone},
      {"no-break space", 0x00A0, Script::kNone},
      {"micro sign", 0x00B5, Script::kNone},
      {"multiplication sign", 0x00D7, Script::kNone},
      {"A with diaeresis", 0x00C4, Script::kLatin},
      {"Vietnamese letter", 0x1EBF, Script::kLatin},
      {"combining acute accent", 0x0301, Script::kMark},
      {"Greek question mark", 0x037E, Script::kNone},
      {"Greek mu", 0x03BC, Script::kGreek},
      {"Greek letter with breathing", 0x1F00, Script::kGreek},
      {"Cyrillic thousands sign", 0x0482, Script::kNone},
      {"Cyrillic a", 0x0430, Script::kCyrillic},
      {"Ukrainian i", 0x0456, Script::kCyrillic},
      {"Hebrew letter", 0x05D0, Script::kOther},
      {"Arabic question mark", 0x061F, Script::kNone},
      {"Arabic letter", 0x0634, Script::kOther},
      {"Thai vowel above", 0x0E34, Script::kOther},
      {"Devanagari full stop", 0x0964, Script::kNone},
      {"ideographic full stop", 0x3002, Script::kNone},
      {"Katakana middle dot", 0x30FB, Script::kNone},
      {"Han", 0x6C34, Script::kOther},
      {"Hangul", 0xD55C, Script::kOther},
      {"full-width A", 0xFF21, Script::kLatin},
      {"full-width question mark", 0xFF1F, Script::kNone},
      {"emoji", 0x1F600, Script::kNone},
      {"Han beyond U+FFFF", 0x20000, Script::kOther},
      {"last code point", 0x10FFFF, Script::kNone},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ScriptOf(row.character), row.script);
  }
}

TEST(Scripts, LettersLookAlikeInBothDirections) {
  EXPECT_TRUE(LooksLikeLetterOf(Script::kCyrillic, 'a'));
  EXPECT_TRUE(LooksLikeLetterOf(Script::kLatin, 0x0430));  // Cyrillic a
  EXPECT_TRUE(LooksLikeLetterOf(Script::kGreek, 'O'));
  EXPECT_TRUE(LooksLikeLetterOf(Script::kCyrillic, 0x039F));  // Greek O
  EXPECT_TRUE(LooksLikeLetterOf(Script::kGreek, 0x041E));     // Cyrillic O
  EXPECT_FALSE(LooksLikeLetterOf(Script::kLatin, 'a'));       // of the script itself
  EXPECT_FALSE(LooksLikeLetterOf(Script::kGreek, 'a'));
  EXPECT_FALSE(LooksLikeLetterOf(Script::kCyrillic, 'Q'));
  EXPECT_FALSE(LooksLikeLetterOf(Script::kLatin, 0x0436));  // Cyrillic zhe
  EXPECT_FALSE(LooksLikeLetterOf(Script::kCyrillic, '1'));
  EXPECT_FALSE(LooksLikeLetterOf(Script::kLatin, 0x2013));  // dash
}

}  // namespace
}  // namespace KelmoLibs::Lang
