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
      {"text pasted twice", "de", "The pump is off", "Die Pumpe steht Die Pumpe steht",
       "warning doubled-word.text Die Pumpe steht"},
      {"text pasted twice without a blank", "de", "The pump is off.",
       "Die Pumpe steht.Die Pumpe steht.", "warning doubled-word.text Die Pumpe steht."},
      {"pasted twice with placeholders", "ru", "Page %1 of %2",
       u8"Страница %1 из %2Страница %1 из %2", u8"warning doubled-word.text Страница %1 из %2"},
      {"placeholders twice", "de", "%1 to %2", "%1 bis %2 %1 bis %2", ""},
      {"two words twice", "de", "again", "noch mal noch mal", ""},
      {"another letter between", "de", "this or this one", "so ist es,so ist es", ""},
      {"the base is pasted twice", "de", "so it is so it is", "so ist es so ist es", ""},
      {"pasted twice, no base", "de", "", "so ist es so ist es", ""},
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
  ExpectResults(CheckDoubled, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
