// The rule untranslated.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(Untranslated, ReportsThreeWordsOrMore) {
  const TextRow rows[] = {
      {"three words", "de", "The project changed", "The project changed",
       "note untranslated.message (all)"},
      {"in title case", "de", "Show Pump Properties", "Show Pump Properties",
       "note untranslated.message (all)"},
      {"with a placeholder", "de", "Enter the %1 value", "Enter the %1 value",
       "note untranslated.message (all)"},
      {"translated", "de", "The project changed", "Das Projekt ist anders", ""},
      {"two words", "de", "Gas turbine", "Gas turbine", ""},
      {"capitals", "de", "NPSH PVC GFRP DN", "NPSH PVC GFRP DN", ""},
      {"options", "de", "--all --quiet --verbose", "--all --quiet --verbose", ""},
      {"path", "de", "/usr/share/doc/pumps", "/usr/share/doc/pumps", ""},
      {"placeholders", "de", "%s: %s %(name)s {one} $two &amp; <b>",
       "%s: %s %(name)s {one} $two &amp; <b>", ""},
      {"letters alone", "de", "x y z a b", "x y z a b", ""},
      {"sentence with a full stop", "de", "It was saved.", "It was saved.",
       "note untranslated.message (all)"},
      {"address", "de", "https://example.org/one/two/three", "https://example.org/one/two/three",
       ""},
      {"another variety of the language", "en-GB", "The project changed", "The project changed",
       ""},
      {"no base", "de", "", "The project changed", ""},
  };
  ExpectResults(CheckUntranslated, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
