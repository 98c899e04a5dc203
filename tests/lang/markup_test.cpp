// The rule line-break. Golden files have the rules entity and tag.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(LineBreaks, AreCountedInShortTexts) {
  const TextRow rows[] = {
      {"equal", "de", "First.\\nSecond.", "Erstens.\\nZweitens.", ""},
      {"lost behind a sentence", "de", "First.\\nSecond.", "Erstens. Zweitens.",
       "warning line-break.message (all)"},
      {"lost between sentences, kept at the end", "de", "First.\\nSecond.\\n",
       "Erstens. Zweitens.\\n", "warning line-break.message (all)"},
      {"lost at the end", "de", "First.\\n", "Erstens.", "warning line-break.message (all)"},
      {"lost empty line at the end", "de", "First.\\n\\n", "Erstens.\\n",
       "warning line-break.message (all)"},
      {"added to a label", "de", "Pressure is high", "Der Druck\\nist hoch",
       "warning line-break.message \\n"},
      {"added between two labels", "de", "Pressure\\nHigh", "Der Druck\\nist\\nhoch",
       "warning line-break.message \\n"},
      {"added at the end", "de", "First.\\n", "Erstens.\\n\\n", "warning line-break.message \\n"},
      {"lost before an indented line", "de", "No host matches\\n\\tthe name.\\n",
       "Kein Host hat den Namen.\\n", "warning line-break.message (all)"},
      {"lost within a sentence", "de", "Run the pump\\nwhen it is cold.\\n",
       "Pumpe kalt starten.\\n", ""},
      {"lost within a sentence and behind one", "de", "Run the pump\\nnow.\\nIt is cold.",
       "Pumpe starten. Sie ist kalt.", "warning line-break.message (all)"},
      {"lost within a sentence, kept behind one", "de", "Run the pump\\nnow.\\nIt is cold.",
       "Pumpe starten.\\nSie ist kalt.", ""},
      {"added to a sentence of two lines", "de", "Cannot stop it, do you\\nwant to go on?",
       u8"Sie lässt sich nicht\\nanhalten. Wollen Sie\\nweitermachen?", ""},
      {"empty line added to a sentence of two lines", "de",
       "Cannot stop it, do you\\nwant to go on?", u8"Sie läuft noch.\\n\\nWeitermachen?",
       "warning line-break.message \\n"},
  };
  ExpectResults(CheckMarkup, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
