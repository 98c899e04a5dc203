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

// What both ways say of characters that may stand in a table.
const Character kCharacters[] = {
    {"NUL", L'\0', false, false},
    {"tab", L'\t', false, true},
    {"LF", L'\n', false, false},
    {"CR", L'\r', false, false},
    {"the last control character", L'\x1F', false, false},
    {"space", L' ', false, true},
    {"the first of ASCII", L'!', true, false},
    {"the last of ASCII", L'~', true, false},
    {"DEL", L'\x7F', false, false},
    {"a control character of Latin-1", L'\x80', false, false},
    {"next line", L'\x85', false, false},
    {"the last of these", L'\x9F', false, false},
    {"no-break space", L'\u00A0', true, false},
    {"degree sign", L'\u00B0', true, false},
    {"Cyrillic em", L'\u043C', true, false},
    {"Hebrew", L'\u05D0', true, false},
    {"Chinese", L'\u4E2D', true, false},
    {"euro sign", L'\u20AC', true, false},
    {"Hangul", L'\uAC00', true, false},
    {"the first half of a pair", static_cast<wchar_t>(0xD800), false, false},
    {"the last half of one", static_cast<wchar_t>(0xDFFF), false, false},
    {"for private use", L'\uE000', true, false},
    {"byte-order mark", L'\uFEFF', true, false},
    {"beyond U+FFFF", L'\U0001F600', true, false},
    {"the last that there is for private use", L'\U0010FFFD', true, false},
    {"beyond U+10FFFF", static_cast<wchar_t>(0x110000), false, false},
    {"no character at all", static_cast<wchar_t>(-2), false, false},
};

TEST(CharacterClasses, AreThoseOfUnicodeWhateverTheHostsLocale) {
  for (const Character& row : kCharacters) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IsGraphic(row.character), row.graphic);
    EXPECT_EQ(IsBlank(row.character), row.blank);
  }
}

// Some are answered without the table: as the table would.
TEST(CharacterClasses, AreThoseOfTheTableForEveryCharacter) {
  const CharacterClasses table("C.UTF-8");
  for (int c = -1; c <= 0x110000; ++c) {
    const auto character = static_cast<wchar_t>(c);
    ASSERT_EQ(IsGraphic(character), table.IsGraphic(character)) << std::hex << c;
    ASSERT_EQ(IsBlank(character), table.IsBlank(character)) << std::hex << c;
  }
}

TEST(CharacterClasses, AreTheSameForAllThatMattersWhereThereIsNoLocale) {
  const CharacterClasses classes("no such locale");
  for (const Character& row : kCharacters) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(classes.IsGraphic(row.character), row.graphic);
    EXPECT_EQ(classes.IsBlank(row.character), row.blank);
  }
}

// What no table tells apart there: all but the control characters shows something.
TEST(CharacterClasses, GoByRangesAloneWhereThereIsNoLocale) {
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
      {"up to the halves of pairs", 0xA0, 0xD7FF, true},
      {"halves of pairs", 0xD800, 0xDFFF, false},
      {"all further characters", 0xE000, 0x10FFFF, true},
      {"behind the last", 0x110000, 0x110010, false},
  };
  const CharacterClasses classes("no such locale");
  for (const Range& range : ranges) {
    SCOPED_TRACE(range.name);
    for (int c = range.first; c <= range.last; ++c) {
      ASSERT_EQ(classes.IsGraphic(static_cast<wchar_t>(c)), range.graphic) << std::hex << c;
    }
  }
}

// So a test of either shows which one was asked.
TEST(CharacterClasses, DifferInBlanksOfTypesetters) {
  const wchar_t emSpace = L'\u2003';
  const CharacterClasses unicode("C.UTF-8");
  EXPECT_FALSE(unicode.IsGraphic(emSpace));
  EXPECT_TRUE(unicode.IsBlank(emSpace));
  const CharacterClasses none("no such locale");
  EXPECT_TRUE(none.IsGraphic(emSpace));
  EXPECT_FALSE(none.IsBlank(emSpace));
  EXPECT_FALSE(IsGraphic(emSpace)) << "the library asks the locale";
  EXPECT_FALSE(unicode.IsGraphic(L'\U0010FFFF')) << "no character";
  EXPECT_TRUE(none.IsGraphic(L'\U0010FFFF')) << "not known to be none";
}

}  // namespace
}  // namespace KelmoLibs::Localize
