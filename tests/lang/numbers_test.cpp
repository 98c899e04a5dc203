// The rules number and look-alike-sign. Signs that look alike are escapes.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

void Expect(const TextRow& row) {
  SCOPED_TRACE(row.name);
  EXPECT_EQ(ResultsOf(CheckNumbers, row), row.expected);
}

TEST(Numbers, ThatChangedAreFound) {
  const TextRow rows[] = {
      {"a digit lost", "de", "20 to 100 rows", "20 bis 10 Zeilen", "warning number.changed 10"},
      {"two digits swapped", "de", "of 2048", "von 2084", "warning number.changed 2084"},
      {"one of two equal numbers", "de", "12, 12", "12, 13", "warning number.changed 13"},
      {"a digit more than one", "de", "IPv6", "IPv64", "warning number.changed 64"},
      {"Arabic digits", "ar", "20 to 100", u8"\u0662\u0660 - \u0661\u0660",
       u8"warning number.changed \u0661\u0660"},
      {"full-width digits", "ja", "100 rows", u8"\uFF11\uFF10", "warning number.changed (all)"},
      {"another year", "de", "Since 2009", "Seit 2010", "warning number.changed 2010"},
      {"a number in Thai", "th", "Port 8080", "8081", "warning number.changed (all)"},
      {"beside a placeholder", "de", "%1 of 100", "%1 von 10", "warning number.changed 10"},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
}

TEST(Numbers, ThatMayDifferAreNot) {
  const TextRow rows[] = {
      {"no base", "de", "", "10", ""},
      {"equal", "de", "100", "100", ""},
      {"another order", "de", "10 of 20", "20, 10", ""},
      {"a number as a word", "de", "12 months", "ein Jahr", ""},
      {"a word as a number", "de", "one of 20", "1 von 20", ""},
      {"one digit: more than 1 is 2 or more", "de", "more than 1", "2 oder mehr", ""},
      {"decimal comma", "de", "2.50 m", "2,50 m", ""},
      {"a zero less behind the comma", "de", "1.0", "1", ""},
      {"groups of digits", "de", "10000 and 1,000", u8"10\u00A0000 und 1.000", ""},
      {"groups with blanks", "fr", "1,000,000", "1 000 000", ""},
      {"another order in a date", "de", "12.05.2024", "05.12.2024", ""},
      {"time of day", "de", "6:00 PM", "18:00", ""},
      {"year without its century", "de", "2004-2014", u8"2004\u201314", ""},
      {"year of the Buddhist calendar", "th", "Since 2009", "2552", ""},
      {"placeholders", "de", "%10 %5d {10} $10 \\10", "%11 %6d {11} $11 \\11", ""},
      {"tags", "de", "<b10>x 20", "<b11>x 20", ""},
      {"two that changed", "de", "10 20", "11 21", ""},
      {"a number too large", "de", "1234567890123456789 10", "1234567890123456789 11", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
  std::string many;
  for (int i = 0; i < 33; ++i) {
    many += "7 ";
  }
  Expect({"too many numbers", "de", many + "10", many + "11", ""});
}

TEST(Numbers, ThatBecameDatesAreFound) {
  const TextRow rows[] = {
      {"German month", "de", "1/2", "01. Feb", "warning number.date (all)"},
      {"English month", "de", "3-4", "4-Mar", "warning number.date (all)"},
      {"month and year", "de", "1/2", "Jan 2002", ""},
      {"month first, and a year", "de", "1.2", "Feb 1 2024", "warning number.date (all)"},
      {"Cyrillic month", "ru", "1/2", u8"01.\u0444\u0435\u0432", "warning number.date (all)"},
      {"whole date", "de", "1/2", "01.02.2024", "warning number.date (all)"},
      {"date of ISO", "de", "1/2", "2024-02-01", "warning number.date (all)"},
      {"words", "de", "1/2", "1 von 2", ""},
      {"a half", "de", "1/2", "ein halb", ""},
      {"a unit", "de", "1/2", "1/2 Zoll", ""},
      {"short letters", "de", "1/2", "1 x", ""},
      {"numbers alone", "de", "1/2", "1.2.3", ""},
      {"four numbers", "de", "1/2", "1 2 3 4", ""},
      {"another sign", "de", "1/2", "01, Feb", ""},
      {"a base of more than two numbers", "de", "1/2/3", "01. Feb", ""},
      {"a base that begins with a sign", "de", "-1/2", "01. Feb", ""},
      {"too long", "de", "1/2", "01. Februaryfebruaryfebruary", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
}

TEST(LookAlikeSigns, OfCodesAreFound) {
  const TextRow rows[] = {
      {"letter O for zero", "de", "Load C0", "Last CO", "warning look-alike-sign.code CO"},
      {"letter l for one", "de", "Q10", "Ql0", "warning look-alike-sign.code (all)"},
      {"zero for the letter O", "de", "OK", "0K", "warning look-alike-sign.code (all)"},
      {"in a number", "de", "100 rows", "1OO Zeilen", "warning look-alike-sign.code 1OO"},
      {"both in the base", "de", "C0 and CO", "CO", ""},
      {"both in the text", "de", "C0", "C0 (CO)", ""},
      {"another letter", "de", "C0", "CU", ""},
      {"other codes", "de", "C0 at 20", "CX at 20", ""},
      {"words alone", "de", "Il o 1", "1l 0 o", "warning look-alike-sign.code 1l"},
      {"placeholders", "de", "%ld of 5", "%1d von 5", ""},
      {"escapes", "de", "\\nO 5", "\\n0 5", ""},
      {"without digits", "de", "Il O", "lI o", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
  const std::string filler(1000, 'x');
  Expect({"too long", "de", "C0 " + filler, "CO " + filler, ""});
}

TEST(LookAlikeSigns, OfDegreesAreFound) {
  const TextRow rows[] = {
      {"ordinal indicator", "de", u8"in \u00B0", u8"als \u00BA",
       u8"warning look-alike-sign.degree \u00BA"},
      {"ring", "de", u8"20 \u00B0C", u8"20 \u02DAC", u8"warning look-alike-sign.degree \u02DA"},
      {"superscript zero", "de", u8"20 \u00B0C", u8"20 \u2070C",
       u8"warning look-alike-sign.degree \u2070"},
      {"degree too", "es", u8"20 \u00B0", u8"n\u00BA 20 \u00B0", ""},
      {"ordinal number", "es", "second floor", u8"2\u00BA piso", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
