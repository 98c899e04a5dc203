#include <gtest/gtest.h>

#include "platform/characters.h"
#include "platform/posix/character_classes.h"

namespace KelmoLibs::Localize {
namespace {

struct Character {
  const char* name;
  wchar_t character;
  bool graphic;
  bool blank;
};

// Classes of characters that may be in a unit table, with and without a locale.
const Character kCharacters[] = {
    {"NUL", L'\0', false, false},
    {"tab", L'\t', false, true},
    {"LF", L'\n', false, false},
    {"CR", L'\r', false, false},
    {"the last control character of ASCII", L'\x1F', false, false},
    {"space", L' ', false, true},
    {"the first graphic one of ASCII", L'!', true, false},
    {"the last graphic one of ASCII", L'~', true, false},
    {"DEL", L'\x7F', false, false},
    {"a control character of Latin-1", L'\x80', false, false},
    {"next line", L'\x85', false, false},
    {"the last control character of Latin-1", L'\x9F', false, false},
    {"no-break space", L'\u00A0', true, false},
    {"degree sign", L'\u00B0', true, false},
    {"Cyrillic em", L'\u043C', true, false},
    {"Hebrew", L'\u05D0', true, false},
    {"Chinese", L'\u4E2D', true, false},
    {"euro sign", L'\u20AC', true, false},
    {"Hangul", L'\uAC00', true, false},
    {"the first surrogate", static_cast<wchar_t>(0xD800), false, false},
    {"the last surrogate", static_cast<wchar_t>(0xDFFF), false, false},
    {"first of a private-use area", L'\uE000', true, false},
    {"byte-order mark", L'\uFEFF', true, false},
    {"beyond U+FFFF", L'\U0001F600', true, false},
    {"last of the private-use areas", L'\U0010FFFD', true, false},
    {"beyond U+10FFFF", static_cast<wchar_t>(0x110000), false, false},
    {"negative", static_cast<wchar_t>(-2), false, false},
};

TEST(CharacterClasses, FollowUnicodeInEveryLocale) {
  for (const Character& row : kCharacters) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IsGraphic(row.character), row.graphic);
    EXPECT_EQ(IsBlank(row.character), row.blank);
  }
}

// The library answers for some characters without the table.
TEST(CharacterClasses, EqualTheTableForEveryCharacter) {
  const CharacterClasses table("C.UTF-8");
  for (int c = -1; c <= 0x110000; ++c) {
    const auto character = static_cast<wchar_t>(c);
    ASSERT_EQ(IsGraphic(character), table.IsGraphic(character)) << std::hex << c;
    ASSERT_EQ(IsBlank(character), table.IsBlank(character)) << std::hex << c;
  }
}

TEST(CharacterClasses, AreTheSameForUsualCharactersWithoutALocale) {
  const CharacterClasses classes("no such locale");
  for (const Character& row : kCharacters) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(classes.IsGraphic(row.character), row.graphic);
    EXPECT_EQ(classes.IsBlank(row.character), row.blank);
  }
}

// Without a locale all characters except control characters and the space are graphic.
TEST(CharacterClasses, AreWholeRangesWithoutALocale) {
  struct Range {
    const char* name;
    int first;
    int last;
    bool graphic;
  };
  const Range ranges[] = {
      {"control characters and the space", 0, 0x20, false},
      {"ASCII", 0x21, 0x7E, true},
      {"DEL and more control characters", 0x7F, 0x9F, false},
      {"up to the surrogates", 0xA0, 0xD7FF, true},
      {"surrogates", 0xD800, 0xDFFF, false},
      {"all further characters", 0xE000, 0x10FFFF, true},
      {"after the last", 0x110000, 0x110010, false},
  };
  const CharacterClasses classes("no such locale");
  for (const Range& range : ranges) {
    SCOPED_TRACE(range.name);
    for (int c = range.first; c <= range.last; ++c) {
      ASSERT_EQ(classes.IsGraphic(static_cast<wchar_t>(c)), range.graphic) << std::hex << c;
    }
  }
}

// Shows that the library uses the locale.
TEST(CharacterClasses, DifferForAnEmSpaceWithoutALocale) {
  const wchar_t emSpace = L'\u2003';
  const CharacterClasses unicode("C.UTF-8");
  EXPECT_FALSE(unicode.IsGraphic(emSpace));
  EXPECT_TRUE(unicode.IsBlank(emSpace));
  const CharacterClasses none("no such locale");
  EXPECT_TRUE(none.IsGraphic(emSpace));
  EXPECT_FALSE(none.IsBlank(emSpace));
  EXPECT_FALSE(IsGraphic(emSpace)) << "the library uses the locale";
  EXPECT_FALSE(unicode.IsGraphic(L'\U0010FFFF')) << "a noncharacter";
  EXPECT_TRUE(none.IsGraphic(L'\U0010FFFF')) << "unknown as a noncharacter";
}

}  // namespace
}  // namespace KelmoLibs::Localize
