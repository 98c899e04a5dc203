// The three formats of files with units. Every problem is compared as a whole line.
#include "host/unit_files.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/texts_of_tests.h"
#include "tests/support/invalid_utf8.h"

namespace {

using namespace KelmoLibs::Host;
using Lines = std::vector<std::string>;
using Reader = void(std::string_view, std::string_view, UnitCollection&, ProblemList*);

// `code|factor|offset|symbol|name|difference`, the numbers by their high parts.
Lines RowsOf(const UnitCollection& units) {
  Lines rows;
  for (const UnitRow& row : units.Rows()) {
    std::ostringstream text;
    text << row.code << '|' << row.factor.high << '|' << row.offset.high << '|' << row.symbol << '|'
         << row.name << '|' << row.difference;
    rows.push_back(text.str());
  }
  return rows;
}

// `language: code|symbol|name`.
Lines NamesOf(const UnitCollection& units) {
  Lines rows;
  for (const LanguageUnits& language : units.Languages()) {
    for (const auto& [code, names] : language.names) {
      rows.push_back(language.id + ": " + std::to_string(code) + '|' + names.symbol + '|' +
                     names.name);
    }
  }
  return rows;
}

struct Case {
  const char* name;
  std::string bytes;
  Lines rows;
  Lines problems;
};

template <class Rows>
void Check(Reader* read, Rows rowsOf, const std::vector<Case>& cases) {
  for (const Case& row : cases) {
    UnitCollection units;
    ProblemList problems;
    read(row.bytes, "f", units, &problems);
    EXPECT_EQ(rowsOf(units), row.rows) << row.name;
    EXPECT_EQ(Printed(problems), row.problems) << row.name;

    UnitCollection again;
    read(row.bytes, "f", again, nullptr);
    EXPECT_EQ(rowsOf(again), row.rows) << row.name << ", without a list";
  }
}

const std::string kLongName(300, 'x');

// ---- Units

constexpr const char* kTooFew =
    "f:1: error: A unit is dropped: a line has 5 or 6 fields with tabs between them: code, factor, "
    "offset, symbol, name, difference; this one has ";

TEST(UnitFile, HasFiveOrSixFields) {
  Check(
      ReadUnitFile, RowsOf,
      {
          {"nothing", "", {}, {}},
          {"a unit", "10001\t1\t\tm\tmetre\n", {"10001|1|0|m|metre|0"}, {}},
          {"the last line without an end", "10001\t1\t\tm\tmetre", {"10001|1|0|m|metre|0"}, {}},
          {"six fields, the last one empty",
           "10001\t1\t0\tm\tmetre\t\n",
           {"10001|1|0|m|metre|0"},
           {}},
          {"points", "18002\t1\t273.15\tC\tCelsius\t19002", {"18002|1|273.15|C|Celsius|19002"}, {}},
          {"a fraction", "18003\t1/8\t1/4\tF\t\t19003", {"18003|0.125|0.25|F||19003"}, {}},
          {"a kind", "10000\t\t\tL\tlength", {"10000|0|0|L|length|0"}, {}},
          {"a kind by its number", "10\t\t\t\t", {"10000|0|0|||0"}, {}},
          {"a kind with zeroes", "10\t0\t0\tL\tlength", {"10000|0|0|L|length|0"}, {}},
          {"blanks around fields",
           " 10001 \t 2 \t  \t US gal \t a name ",
           {"10001|2|0|US gal|a name|0"},
           {}},
          {"comments and empty lines",
           "# 1\n\n \t \n#\n10001\t1\t\t#\tsharp\n",
           {"10001|1|0|#|sharp|0"},
           {}},
          {"CR LF",
           "# 1\r\n\r\n10001\t1\t\tm\tmetre\r\n10002\t2\t\tin\tinch\t\r\n",
           {"10001|1|0|m|metre|0", "10002|2|0|in|inch|0"},
           {}},
          {"a byte-order mark", "\uFEFF10001\t1\t\tm\tmetre\n", {"10001|1|0|m|metre|0"}, {}},
          {"only a byte-order mark", "\uFEFF", {}, {}},
          {"a name of 255 bytes",
           "10001\t1\t\tm\t" + kLongName.substr(0, 255),
           {"10001|1|0|m|" + kLongName.substr(0, 255) + "|0"},
           {}},
          {"a comment behind a blank", " # 1", {}, {kTooFew + std::string("1")}},
          {"four fields", "10001\t1\tm\tmetre", {}, {kTooFew + std::string("4")}},
          {"seven fields", "10001\t1\t\tm\tmetre\t\t", {}, {kTooFew + std::string("7")}},
      });
}

TEST(UnitFile, TellsWhatItDrops) {
  Check(ReadUnitFile, RowsOf,
        {
            {"a code that is no number",
             "x\t1\t\tm\tmetre",
             {},
             {"f:1:1: error: A unit is dropped: \"x\" is not the code of a unit"}},
            {"an empty code",
             "\n\t1\t\tm\tmetre",
             {},
             {"f:2:1: error: A unit is dropped: \"\" is not the code of a unit"}},
            {"a code beyond 32 bits",
             "  4294967297\t1\t\tm\tmetre",
             {},
             {"f:1:3: error: A unit is dropped: \"4294967297\" is not the code of a unit"}},
            {"a code with a decimal point",
             "10001.0\t1\t\tm\tmetre",
             {},
             {"f:1:1: error: A unit is dropped: \"10001.0\" is not the code of a unit"}},
            {"a code that is not allowed",
             "500\t1\t\tm\tmetre",
             {},
             {"f:1: error: A unit is dropped: codes from 100 to 999 are not allowed"}},
            {"a factor with a comma",
             "10001\t0,5\t\tm\tmetre",
             {},
             {"f:1:7: error: A unit is dropped: \"0,5\" is not a number, such as 0.0254 or 5/9"}},
            {"an offset that is no number",
             "18002\t1\t x\tC\tCelsius\t19002",
             {},
             {"f:1:10: error: A unit is dropped: \"x\" is not a number, such as 0.0254 or 5/9"}},
            {"no factor",
             "10001\t\t\tm\tmetre",
             {},
             {"f:1: error: A unit is dropped: the factor is not a number above 0"}},
            {"a difference that is no code",
             "18002\t1\t1\t\u00B0C\tCelsius\tK",
             {},
             {"f:1:22: error: A unit is dropped: \"K\" is not the code of a unit"}},
            {"an offset without a difference",
             "18002\t1\t1\tC\tCelsius",
             {},
             {"f:1: error: A unit is dropped: a unit with an offset needs the code of the unit of "
              "its "
              "differences"}},
            {"an empty symbol",
             "10001\t1\t\t\tmetre",
             {},
             {"f:1: error: A unit is dropped: the symbol is empty"}},
            {"a symbol that begins like a number",
             "10001\t1\t\t2m\tmetre",
             {},
             {"f:1: error: A unit is dropped: the symbol begins like a number"}},
            {"a name that is too long",
             "10001\t1\t\tm\t" + kLongName,
             {},
             {"f:1: error: A unit is dropped: the name has more than 255 bytes"}},
            {"a zero in the name",
             std::string("10001\t1\t\tm\tme") + '\0' + "tre\n10002\t1\t\tin\tinch",
             {"10002|1|0|in|inch|0"},
             {"f:1: error: A unit is dropped: the name has a control character"}},
            {"a zero in the code",
             std::string("1\0", 2) + "\t1\t\tm\tmetre",
             {},
             {"f:1:1: error: A unit is dropped: \"1\\x00\" is not the code of a unit"}},
            {"a CR that ends no line",
             "10001\t1\t\tm\tme\rtre",
             {},
             {"f:1:14: error: A unit is dropped: a CR without an LF ends no line"}},
            {"a comment that a CR would end",
             "# units\r10001\t1\t\tm\tmetre",
             {},
             {"f:1:8: error: A unit is dropped: a CR without an LF ends no line"}},
            {"a byte-order mark in the second line",
             "\n\uFEFF10001\t1\t\tm\tmetre",
             {},
             {"f:2:1: error: A unit is dropped: \"\uFEFF10001\" is not the code of a unit"}},
            {"a code that is repeated",
             "10001\t1\t\tm\tmetre\n10001\t2\t\tn\tother\n",
             {"10001|1|0|m|metre|0"},
             {"f:2:1: error: The code is repeated: the first line with it counts: 10001"}},
            {"a kind that is repeated in its other form",
             "10\t\t\tL\tlength\n10000\t\t\tM\tother\n",
             {"10000|0|0|L|length|0"},
             {"f:2:1: error: The code is repeated: the first line with it counts: 10000"}},
            {"a line that is dropped does not count as the first",
             "10001\t0\t\tm\tmetre\n10001\t2\t\tn\tother\n",
             {"10001|2|0|n|other|0"},
             {"f:1: error: A unit is dropped: the factor is not a number above 0"}},
            {"lines behind one that is dropped",
             "x\n10001\t1\t\tm\tmetre",
             {"10001|1|0|m|metre|0"},
             {kTooFew + std::string("1")}},
        });
}

// Factors keep their digits; unit_number_test.cpp has the rest.
TEST(UnitFile, KeepsTheLowPartsOfNumbers) {
  UnitCollection units;
  ReadUnitFile("18003\t5/9\t2298.35/9\tF\tFahrenheit\t19003", "f", units, nullptr);
  ASSERT_EQ(units.Rows().size(), 1U);
  EXPECT_EQ(units.Rows()[0].factor.low, -0x1.c71c71c71c71cp-56);
  EXPECT_EQ(units.Rows()[0].offset.low, -0x1.b05b05b05b05bp-47);
}

TEST(UnitFile, DropsOnlyTheLinesThatAreNotUtf8) {
  for (const InvalidUtf8& invalid : kInvalidUtf8) {
    const std::string bytes = "10001\t1\t\tm\tmetre\n10002\t1\t\t\u00B5" +
                              std::string(invalid.bytes) + "\tx\n10003\t1\t\tn\tnew\n";
    for (const bool isEnd : {false, true}) {
      UnitCollection units;
      ProblemList problems;
      ReadUnitFile(isEnd ? bytes.substr(0, bytes.find("\tx\n")) : bytes, "f", units, &problems);
      EXPECT_EQ(RowsOf(units).size(), isEnd ? 1U : 2U) << invalid.name;
      EXPECT_EQ(Printed(problems),
                (Lines{"f:2:11: error: A unit is dropped: the line is not UTF-8"}))
          << invalid.name;
    }
  }
}

// ---- Four fields

TEST(FourFields, AreThoseOfTheFirstLibrary) {
  Check(ReadFourFields, RowsOf,
        {
            {"nothing", "", {}, {}},
            {"a unit", "10001\t1\tm\tmetre\n", {"10001|1|0|m|metre|0"}, {}},
            {"blanks", "  10001   1 m metre  ", {"10001|1|0|m|metre|0"}, {}},
            {"a comment", "// all\n10001 1 m metre // a metre\n", {"10001|1|0|m|metre|0"}, {}},
            {"a kind", "10 0 L length\n", {"10000|0|0|L|length|0"}, {}},
            {"the factor 0", "30001 0 K koefficient", {"30001|0|0|K|koefficient|0"}, {}},
            {"CR LF and a byte-order mark",
             "\uFEFF10001\t1\tm\tmetre\r\n\r\n",
             {"10001|1|0|m|metre|0"},
             {}},
        });
}

TEST(FourFields, TellWhatIsDropped) {
  constexpr const char* kFewer =
      "f:1: error: A line is dropped, as the first library drops it: a line needs a code, a "
      "factor, "
      "a symbol and a name";
  Check(ReadFourFields, RowsOf,
        {
            {"three words", "10001 1 m", {}, {kFewer}},
            {"control characters between words",
             "10001\x7F"
             "1\x1Fm",
             {},
             {kFewer}},
            {"a comment in place of the name", "10001 1 m // metre", {}, {kFewer}},
            {"five words",
             "20001\t1\tm2\tsquare meter",
             {},
             {"f:1:19: error: A line is dropped, as the first library drops it: the name has a "
              "blank"}},
            {"a code that is no number",
             " x 1 m metre",
             {},
             {"f:1:2: error: A unit is dropped: \"x\" is not the code of a unit"}},
            {"a factor that is no number",
             "10001 x m metre",
             {},
             {"f:1:7: error: A unit is dropped: \"x\" is not a number, such as 0.0254"}},
            {"a fraction",
             "10001 1/2 m metre",
             {},
             {"f:1:7: error: A unit is dropped: \"1/2\" is not a number, such as 0.0254"}},
            {"a negative factor",
             "10001 -1 m metre",
             {},
             {"f:1: error: A unit is dropped: the factor is not a number above 0"}},
            {"a kind with a factor",
             "10 1 L length",
             {},
             {"f:1: error: A unit is dropped: a kind has no factor, no offset and no difference"}},
            {"a code that is repeated",
             "10001 1 m metre\n10001 2 n other",
             {"10001|1|0|m|metre|0"},
             {"f:2:1: error: The code is repeated: the first line with it counts: 10001"}},
            {"a line that is not UTF-8",
             "10001 1 m \xFF\n10002 1 in inch",
             {"10002|1|0|in|inch|0"},
             {"f:1:11: error: A unit is dropped: the line is not UTF-8"}},
        });
}

// ---- Names

TEST(UnitNames, AreThreeFieldsBehindTheIdOfTheLanguage) {
  Check(ReadUnitNames, NamesOf,
        {
            {"a header", "de Deutsch\n", {}, {}},
            {"a name", "de Deutsch\n10001\tm\tMeter\n", {"de: 10001|m|Meter"}, {}},
            {"a header without a name", "de\n10001\tm\tMeter", {"de: 10001|m|Meter"}, {}},
            {"words", "de\n10001 m Meter", {"de: 10001|m|Meter"}, {}},
            {"a name with a blank, between words",
             "de\n20001  m2 \t Meter  im Quadrat ",
             {"de: 20001|m2|Meter  im Quadrat"},
             {}},
            {"a symbol with a blank, between tabs",
             "de\n11011\tUS gal\tUS Gallone",
             {"de: 11011|US gal|US Gallone"},
             {}},
            {"several tabs", "de\n10001\t\tm\t\t\tMeter", {"de: 10001|m|Meter"}, {}},
            {"comments",
             "de // German\n// lengths\n10001\tm\tMeter // metre\n",
             {"de: 10001|m|Meter"},
             {}},
            {"CR LF and a byte-order mark",
             "\uFEFFde Deutsch\r\n\r\n10001\tm\tMeter\r\n",
             {"de: 10001|m|Meter"},
             {}},
            {"a kind by its number", "de\n10\tL\tL\u00E4nge", {"de: 10000|L|L\u00E4nge"}, {}},
            {"the order of codes",
             "de\n10002\tin\tZoll\n10001\tm\tMeter",
             {"de: 10001|m|Meter", "de: 10002|in|Zoll"},
             {}},
        });
}

TEST(UnitNames, TellWhatIsDropped) {
  constexpr const char* kNoId =
      "error: A unit is dropped: the first line has no id of a language: nothing is read";
  constexpr const char* kFewer =
      "f:2: error: A unit is dropped: a line needs a code, a symbol and a name";
  Check(ReadUnitNames, NamesOf,
        {
            {"nothing", "", {}, {std::string("f: ") + kNoId}},
            {"an empty first line", "\n10001\tm\tMeter", {}, {std::string("f:1: ") + kNoId}},
            {"a comment as the first line",
             "// de\n10001\tm\tMeter",
             {},
             {std::string("f:1: ") + kNoId}},
            {"a first line that is not UTF-8",
             "de \xFF\n10001\tm\tMeter\n",
             {},
             {"f:1:4: error: A unit is dropped: the line is not UTF-8",
              std::string("f:1: ") + kNoId}},
            {"no header but a unit",
             "10001\tm\tMeter\n10002\tin\tZoll\n",
             {},
             {std::string("f:1: ") + kNoId}},
            {"a comment of files of units",
             "# de\n10001\tm\tMeter",
             {},
             {std::string("f:1: ") + kNoId}},
            {"two tabs without a symbol", "de\n10001\t\tlaufender Meter", {}, {kFewer}},
            {"two tabs without a name", "de\n17900\tmm Hg\t", {}, {kFewer}},
            {"two words", "de\n10001 m", {}, {kFewer}},
            {"two fields with tabs", "de\n10001\tm\t\t", {}, {kFewer}},
            {"four fields with tabs",
             "de\n10001\tm\tMeter\tMetre",
             {},
             {"f:2: error: A unit is dropped: a line has three fields with tabs between them"}},
            {"a code that is no number",
             "de\n\tx\tm\tMeter",
             {},
             {"f:2:2: error: A unit is dropped: \"x\" is not the code of a unit"}},
            {"a code that is not allowed",
             "de\n500\tm\tMeter",
             {},
             {"f:2:1: error: A unit is dropped: \"500\" is not the code of a unit"}},
            {"a symbol that begins like a number",
             "de\n10001\t2m\tMeter",
             {},
             {"f:2:7: error: A unit is dropped: the symbol begins like a number"}},
            {"a name with a control character",
             "de\n10001\t\u043C\tMe\x01ter",
             {},
             {"f:2:9: error: A unit is dropped: the name has a control character"}},
            {"a name that is too long",
             "de\n10001\tm\t" + kLongName,
             {},
             {"f:2:9: error: A unit is dropped: the name has more than 255 bytes"}},
            {"a code that is repeated",
             "de\n10\tL\tA\n10000\tL\tB",
             {"de: 10000|L|A"},
             {"f:3:1: error: The code is repeated: the first line with it counts: 10000"}},
            {"a line that is not UTF-8",
             "de\n10001\tm\t\xFF\n10002\tin\tZoll",
             {"de: 10002|in|Zoll"},
             {"f:2:9: error: A unit is dropped: the line is not UTF-8"}},
        });
}

TEST(UnitNames, OfTheFirstFileOfALanguageCount) {
  UnitCollection units;
  ProblemList problems;
  ReadUnitNames("de\n10001\tm\tMeter", "1", units, &problems);
  ReadUnitNames("fi\n10001\tm\tmetri", "2", units, &problems);
  ReadUnitNames("de\n10001\tx\tanders\n10002\tin\tZoll", "3", units, &problems);
  EXPECT_EQ(NamesOf(units), (Lines{"de: 10001|m|Meter", "de: 10002|in|Zoll", "fi: 10001|m|metri"}));
  EXPECT_EQ(Printed(problems), Lines()) << "another file may repeat a name";
}

}  // namespace
