// The rule accelerator.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(Accelerators, CompareWithTheBase) {
  const TextRow rows[] = {
      {"equal", "de", "&File", "&Datei", ""},
      {"behind the text", "ja", "&File", u8"ファイル(&F)", ""},
      {"Cyrillic", "ru", "&File", u8"&Файл", ""},
      {"missing", "de", "&File", "Datei", "note accelerator.missing (all)"},
      {"two", "de", "&File", "&Dat&ei", "warning accelerator.second &Dat&e"},
      {"none in the base", "de", "Search and replace", "Suchen&Ersetzen",
       "warning accelerator.surplus &E"},
      {"doubled is none", "de", "Search and replace", "Suchen && Ersetzen", ""},
      {"doubled and one", "de", "&Search", "&&&Suchen", ""},
      {"blank behind", "de", "Search and replace", "Suchen & Ersetzen", ""},
      {"at the end", "de", "Search", "Suchen&", ""},
      {"before a digit", "de", "Page 1", "Seite &1", ""},
      {"entity", "de", "Save as", "Speichern&nbsp;unter", ""},
      {"entity by number", "de", "Cafe", "Caf&#233;", ""},
      {"broken entity, which rule entity reports", "de", "Flow &amp; pressure",
       "Durchfluss &amp Druck", ""},
      {"begin of an entity's name", "de", "Flow &amp; pressure", "Durchfluss &am Druck",
       "warning accelerator.surplus &a"},
      {"address", "de", "Help", "https://example.org/?a=1&b=2", ""},
      {"redirection of a shell", "de", "all output", "alles mit 2>&datei", ""},
      {"several in the base, fewer here", "de", "&One &Two", "&Eins Zwei", ""},
      {"no base", "de", "", "&Dat&ei", ""},
  };
  ExpectResults(CheckAccelerators, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
