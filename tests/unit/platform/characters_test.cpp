// Characters whose class is the same on every system. characters_posix_test.cpp and
// characters_windows_test.cpp test more characters.

#include "platform/characters.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Localize {
namespace {

TEST(CharacterClass, IsTheSameOnEverySystemForUsualCharacters) {
  const struct {
    const char* name;
    wchar_t character;
    bool graphic;
    bool blank;
  } rows[] = {
      {"NUL", L'\0', false, false},
      {"tab", L'\t', false, true},
      {"LF", L'\n', false, false},
      {"CR", L'\r', false, false},
      {"0x1F", L'\x1F', false, false},
      {"space", L' ', false, true},
      {"!", L'!', true, false},
      {"~", L'~', true, false},
      {"DEL", L'\x7F', false, false},
      {"a control character of Latin-1", L'\x85', false, false},
      {"degree sign", L'\u00B0', true, false},
      {"Cyrillic em", L'\u043C', true, false},
      {"Hebrew alef", L'\u05D0', true, false},
      {"Chinese", L'\u4E2D', true, false},
      {"a high surrogate", wchar_t{0xD83D}, false, false},
      {"a low surrogate", wchar_t{0xDE00}, false, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IsGraphic(row.character), row.graphic);
    EXPECT_EQ(IsBlank(row.character), row.blank);
  }
}

TEST(CharacterClass, AByteOrderMarkIsGraphicOrBlank) {
  EXPECT_TRUE(IsGraphic(L'\uFEFF') || IsBlank(L'\uFEFF')) << "graphic on Linux, blank on Windows";
}

}  // namespace
}  // namespace KelmoLibs::Localize
