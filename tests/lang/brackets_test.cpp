// The rule bracket.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(Brackets, AreClosed) {
  const TextRow rows[] = {
      {"balanced", "de", "(a) [b] {c}", "(a) [b] {c}", ""},
      {"lost end", "de", "Length (mm)", u8"Länge (mm", "warning bracket.message ("},
      {"lost begin", "de", "Length (mm)", u8"Länge mm)", "warning bracket.message )"},
      {"lost begin of a placeholder", "de", "Pumps [%1]", "Pumpen %1]",
       "warning bracket.message ]"},
      {"one too many", "de", "Length (mm)", u8"Länge (mm))", "warning bracket.message )"},
      {"braces of a placeholder", "de", "by {name}", "von {name", ""},
      {"braces", "de", "the set", "die {Menge", "warning bracket.message {"},
      {"wrong order", "de", "(mm)", ")mm(", "warning bracket.message )"},
      {"the first lone one is marked", "de", "(a)", "(a (b", "warning bracket.message ("},
      {"nested", "de", "((a))", "((a))", ""},
      {"mixed width", "zh", "Length (mm)", u8"长度（mm)", ""},
      {"full-width", "zh", "Length (mm)", u8"长度（mm", u8"warning bracket.message （"},
      {"corner brackets", "ja", "\"%1\" moved", u8"「%1を移動", u8"warning bracket.message 「"},
      {"the base is unbalanced too", "de", "still wanted (", "noch gesucht (", ""},
      {"another kind is unbalanced in the base", "de", "still wanted (", "noch [gesucht (",
       "warning bracket.message ["},
      {"guillemets", "de", "\"%1\" moved", u8"»%1« verschoben", ""},
      {"guillemets of Finnish", "fi", "\"%1\" moved", u8"»%1» siirretty", ""},
      {"lone guillemet", "fr", "\"%1\" moved", u8"« %1 déplacé", u8"warning bracket.message «"},
      {"the quotation of the base is open", "fr", "keyword `", u8"mot-clé « ", ""},
      {"enumeration by letters", "de", "a, b", "a) eins, b) zwei", ""},
      {"enumeration by numbers", "de", "1, 12", "1) eins\\n12) zwei", ""},
      {"enumeration by Roman numbers", "de", "1, 2", "i) eins; iv) vier", ""},
      {"enumeration in Cyrillic letters", "ru", "a, b", u8"а) один, б) два", ""},
      {"smiley", "de", "Done", "Fertig :-)", ""},
      {"sad smiley", "de", "Failed", "Fehler :(", ""},
      {"quoted bracket", "de", "expected '('", u8"„(“ erwartet", ""},
      {"quoted by a spreadsheet", "de", "Stop, then wait", "\"Stopp, dann warten\"",
       "warning bracket.quoted (all)"},
      {"quoted, with doubled marks within", "de", "Open \"%1\" now", "\"Jetzt \"\"%1\"\" öffnen\"",
       "warning bracket.quoted (all)"},
      {"quoted, with other marks within", "de", "It is in \"%1\".", u8"\"Es ist in „%1“.\"",
       "warning bracket.quoted (all)"},
      {"quoted, with an apostrophe in the base", "de", "Don't save it", "\"Nicht jetzt sichern\"",
       "warning bracket.quoted (all)"},
      {"a quoted name", "de", "Foreword", "\"Vorwort\"", ""},
      {"a quoted placeholder", "de", "%1", "\"%1\"", ""},
      {"quotations at both ends", "de", "%1 goes, then %2", R"("%1" geht, dann "%2")", ""},
      {"the base is quoted", "de", "'Stop, then wait'", "\"Stopp, dann warten\"", ""},
      {"the base quotes its end", "de", "Name: \"A, B and C\"", "\"A, B und C\"", ""},
      {"the base quotes a part", "de", "Say \"a, b, c\" now", "\"a, b, c\"", ""},
      {"quoted, no base", "de", "", "\"Stopp, dann warten\"", ""},
      {"only a quotation mark", "de", "Stop, then wait", "\"", ""},
      {"a remark behind the text", "fr", "Saved.", u8"Enregistré. (à vérifier)",
       u8"warning bracket.remark (à vérifier)"},
      {"a remark behind a question", "de", "Save?", "Speichern? (noch)",
       "warning bracket.remark (noch)"},
      {"brackets inside the sentence", "de", "Saved.", "Gespeichert (hier).", ""},
      {"brackets at the end of the sentence", "de", "Saved", "Gespeichert (hier)", ""},
      {"brackets in the base", "de", "Saved. (See the log)", "Gespeichert. (Siehe Protokoll)", ""},
      {"a key letter behind a question", "ja", "Save?", u8"保存? (&S)", ""},
      {"a number in brackets", "de", "Time. Range: 0-9 s", "Die Zeit. (0-9 s)", ""},
      {"a placeholder in brackets", "de", "Saved: %1", "Gespeichert: (%1)", ""},
      {"no base: a note", "de", "", u8"Länge (mm", "note bracket.message ("},
      {"no base, balanced", "de", "", u8"Länge (mm)", ""},
  };
  ExpectResults(CheckBrackets, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
