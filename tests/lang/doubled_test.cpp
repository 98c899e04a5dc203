// The rules doubled-word and doubled-blank.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(Doubled, FindsWordsAndBlanks) {
  const TextRow rows[] = {
      {"word", "de", "It was saved", "Es wurde wurde gesichert", "note doubled-word.message wurde"},
      {"word with two blanks", "ru", "It was saved", u8"Он был  был сохранён",
       u8"note doubled-word.message был; note doubled-blank.message   "},
      {"one Cyrillic letter", "ru", "and is", u8"есть и и", u8"note doubled-word.message и"},
      {"behind a bracket", "de", "(the pump", "(die Werte (von von",
       "note doubled-word.message von"},
      {"before a full stop", "de", "it is", "so ist ist.", "note doubled-word.message ist"},
      {"no base", "de", "", "Es wurde wurde gesichert", "note doubled-word.message wurde"},
      {"comma between", "de", "Yes, yes", "Ja, Ja", ""},
      {"other case", "de", "Yes", "Wurde wurde", ""},
      {"one letter", "de", "a a", "x x", ""},
      {"relative pronoun", "de", "that it has", "Werte die die Pumpe hat", ""},
      {"reflexive pronoun", "fr", "you expect", "vous vous attendez", ""},
      {"the base doubles", "de", "help help", "Hilfe Hilfe", ""},
      {"Indonesian", "id", "pumps", "pompa pompa", ""},
      {"Vietnamese", "vi", "choose from", u8"chọn từ từ danh sách", ""},
      {"placeholder between", "de", "from %1 to", "von %1 von", ""},
      {"blanks", "de", "It was saved", "Es  wurde gesichert", "note doubled-blank.message   "},
      {"the base has two blanks", "de", "a  b", "a   b", ""},
      {"blanks without base", "de", "", "a  b", "note doubled-blank.message   "},
  };
  for (const TextRow& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ResultsOf(CheckDoubled, row), row.expected);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
