#include "dictionary/dictionary_line.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

TEST(SplitDictionaryLine, SplitsAtTheFirstRunOfBlanks) {
  const struct {
    const char* name;
    std::string line;
    std::string key;
    std::string text;
  } rows[] = {
      {"a tab", "menu.file\tDatei", "menu.file", "Datei"},
      {"a space", "menu.file Datei", "menu.file", "Datei"},
      {"a run of both", "menu.exit \t  Beenden", "menu.exit", "Beenden"},
      {"inner blanks stay", "k Die Datei wurde   ge\tspeichert.", "k",
       "Die Datei wurde   ge\tspeichert."},
      {"bytes beyond ASCII",
       "title.about \xC3\x9C"
       "ber",
       "title.about",
       "\xC3\x9C"
       "ber"},
      {"a no-break space separates nothing",
       "a\xC2\xA0"
       "b c",
       "a\xC2\xA0"
       "b",
       "c"},
      {"a vertical tab and a form feed separate nothing", "a\vb\fc d", "a\vb\fc", "d"},
      {"a backslash and an n stay two characters", "k a\\nb", "k", "a\\nb"},
      {"quotes stay", "k \"text\"", "k", "\"text\""},
      {"NUL is a character", "a\0b c\0d"s, "a\0b"s, "c\0d"s},

      // Without a separator the whole line is the key, untrimmed
      {"empty line", "", "", ""},
      {"only a key", "lonely", "lonely", ""},
      {"only a key: its CR stays", "lonely\r", "lonely\r", ""},

      // The end of the text is trimmed
      {"trailing spaces", "k text   ", "k", "text"},
      {"trailing tabs and spaces", "k text \t \t", "k", "text"},
      {"trailing CR", "k text\r", "k", "text"},
      {"trailing LF, CR and blanks", "k text \r\n\r ", "k", "text"},
      {"a CR inside stays", "k te\rxt", "k", "te\rxt"},
      {"other control characters are not trimmed", "k text\v", "k", "text\v"},

      // If only blanks and CR follow the key, they are the text, without the first blank
      {"one separator", "k\t", "k", ""},
      {"two spaces", "k  ", "k", " "},
      {"three spaces", "k   ", "k", "  "},
      {"mixed blanks", "k \t ", "k", "\t "},
      {"only a CR is the text", "k \r", "k", "\r"},
      {"CR and blanks", "k  \r \r", "k", "\r \r"},

      // The empty key
      {"a leading space", " word", "", "word"},
      {"leading blanks", " \t word ", "", "word"},
      {"one blank", " ", "", ""},
      {"only blanks", "   ", "", "  "},
      {"a CR in the key", "a\rb c", "a\rb", "c"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const DictionaryLine split = SplitDictionaryLine(row.line);
    EXPECT_EQ(split.key, row.key);
    EXPECT_EQ(split.text, row.text);
  }
}

// At every offset of a key, which is scanned in steps of eight bytes, and at both ends of a text.
TEST(SplitDictionaryLine, OnlySpaceAndTabAreBlanks) {
  for (int byte = 0; byte < 0x100; ++byte) {
    const std::string other(1, static_cast<char>(byte));
    if (other == " " || other == "\t") {
      continue;
    }
    SCOPED_TRACE(byte);
    for (std::size_t offset = 0; offset <= 16; ++offset) {
      const std::string key = std::string(offset, 'k') + other + "k";
      const std::string line = key + " text";
      const DictionaryLine split = SplitDictionaryLine(line);
      EXPECT_EQ(split.key, key);
      EXPECT_EQ(split.text, "text");
    }
    const bool isTrimmed = other == "\r" || other == "\n";
    const std::string line = "k " + other + "text" + other;
    EXPECT_EQ(SplitDictionaryLine(line).key, "k");
    EXPECT_EQ(SplitDictionaryLine(line).text, other + "text" + (isTrimmed ? "" : other));
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
