#include "host/unit_set.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/texts_of_tests.h"
#include "tests/host/units_of_tests.h"
#include "tests/support/random_numbers.h"

namespace {

using namespace KelmoLibs::Host;
using Lines = std::vector<std::string>;
using Codes = std::vector<std::int32_t>;
using Result = FoundUnits::Result;

Codes CodesOf(const std::vector<const UnitRow*>& units) {
  Codes codes;
  for (const UnitRow* const unit : units) {
    codes.push_back(unit->code);
  }
  return codes;
}

constexpr std::string_view kTable =
    "10000\t\t\tL\tlength\n"
    "10001\t1\t\tm\tmetre\n"
    "10002\t0.0254\t\tin\tinch\n"
    "12000\t\t\t\ttime\n"
    "12005\t60\t\tmin\tminute\n"
    "40003\t1/60\t\t\u2032\tminute\n"
    "11001\t1\t\tm\u00B3\tcubic metre\n"
    "11002\t0.001\t\tdm3\tcubic decimetre\n"
    "11003\t1e-9\t\tmm\u00B3\t\n"
    "18001\t1\t\tK\tkelvin\t19001\n"
    "18002\t1\t273.15\t\u00B0C\tdegree Celsius\t19002\n"
    "19001\t1\t\tK\tkelvin\n"
    "19002\t1\t\t\u00B0C\tdegree Celsius\n"
    "13001\t0.001\t\tmW\tmilliwatt\n"
    "13002\t1e6\t\tMW\tmegawatt\n"
    "15001\t0.003785411784\t\tUS gal\tUS gallon\n"
    "16001\t1e-6\t\t\u00B5m\tmicrometre\n"
    "21000\t\t\tA\tarea\n";

constexpr std::string_view kRussian =
    "ru\n11\tV\t\u043E\u0431\u044A\u0451\u043C\n10000\t\u0434\t\u0434\u043B\u0438\u043D\u0430\n1000"
    "1\t\u043C\t\u043C\u0435\u0442\u0440\n";
// A language in which the inch has the symbol of the metre.
constexpr std::string_view kStrange = "xx\n10002\tm\temm\n13001\tdm\u00B3\tpower\n";

UnitCollection Collection() {
  UnitCollection units = CollectUnits(kTable);
  ReadUnitNames(kRussian, "ru", units, nullptr);
  ReadUnitNames(kStrange, "xx", units, nullptr);
  return units;
}

TEST(UnitSet, FindsUnitsByTheirCodes) {
  const UnitSet units(Collection(), nullptr);
  ASSERT_NE(units.Find(10002), nullptr);
  EXPECT_EQ(units.Find(10002)->symbol, "in");
  for (const std::int32_t code : {10, 10000, 12000, 10003, 0, -10001, 2147483647}) {
    EXPECT_EQ(units.Find(code), nullptr) << code;
  }
}

TEST(UnitSet, FindsEachOfManyCodesAndNoOther) {
  RandomNumbers random(randomSeed);
  for (const int count : {0, 1, 2, 3, 7, 8, 500, 3000}) {
    UnitCollection collection;
    std::set<std::int32_t> codes;
    for (int i = 0; i < count; ++i) {
      UnitRow row;
      row.code = i % 2 == 0 ? 1000 * (1 + i % 9) + i : 1000 + random.Below(2147000000);
      row.factor.high = 1;
      row.symbol = "u";
      codes.insert(row.code);
      collection.Put(row);
    }
    const UnitSet units(collection, nullptr);
    for (const std::int32_t code : codes) {
      ASSERT_EQ(units.Find(code) != nullptr, !IsKindCode(code)) << code;
      ASSERT_TRUE(IsKindCode(code) || units.Find(code)->code == code) << code;
      ASSERT_EQ(units.Find(code + 1) != nullptr,
                codes.count(code + 1) != 0 && !IsKindCode(code + 1))
          << code + 1;
    }
  }
}

TEST(UnitSet, HasKindsInTheOrderOfLoading) {
  const UnitSet units(Collection(), nullptr);
  Codes kinds;
  for (const UnitSet::Kind& kind : units.Kinds()) {
    kinds.push_back(kind.number);
    EXPECT_EQ(units.FindKind(kind.number), &kind) << kind.number;
    EXPECT_EQ(&units.UnitsOf(kind.number), &kind.units) << kind.number;
  }
  EXPECT_EQ(kinds, (Codes{10, 12, 40, 11, 18, 19, 13, 15, 16})) << "a kind without units is none";
  EXPECT_EQ(units.FindKind(21), nullptr);
  EXPECT_EQ(units.FindKind(10)->row->name, "length");
  ASSERT_NE(units.FindKind(11)->row, nullptr);
  EXPECT_EQ(units.FindKind(11)->row->code, 11000);
  EXPECT_EQ(units.FindKind(11)->row->name, "") << "no file names it";
  EXPECT_EQ(CodesOf(units.UnitsOf(10)), (Codes{10001, 10002}));
  EXPECT_EQ(CodesOf(units.UnitsOf(21)), Codes());
  EXPECT_EQ(CodesOf(units.UnitsOf(10000)), Codes()) << "the number of the kind is 10";
  EXPECT_EQ(CodesOf(units.UnitsOf(-10)), Codes());
  EXPECT_EQ(CodesOf(units.UnitsOf(0)),
            (Codes{10001, 10002, 12005, 40003, 11001, 11002, 11003, 18001, 18002, 19001, 19002,
                   13001, 13002, 15001, 16001}));
}

TEST(UnitSet, LabelsAreThoseOfTheFirstLanguageThatHasThem) {
  const UnitSet units(Collection(), nullptr);
  struct Row {
    const char* name;
    std::int32_t code;
    LanguageChain languages;
    const char* symbol;
    const char* text;
  };
  const Row rows[] = {
      {"no language", 10001, {}, "m", "metre"},
      {"a language", 10001, {"ru"}, "\u043C", "\u043C\u0435\u0442\u0440"},
      {"a language without the unit", 10001, {"xx"}, "m", "metre"},
      {"the second language", 10001, {"xx", "ru"}, "\u043C", "\u043C\u0435\u0442\u0440"},
      {"the first of two languages", 10002, {"xx", "ru"}, "m", "emm"},
      {"an unknown language", 10002, {"de", ""}, "in", "inch"},
      {"ids are compared exactly", 10001, {"RU", "ru-RU"}, "m", "metre"},
      {"no name", 11003, {}, "mm\u00B3", ""},
  };
  for (const Row& row : rows) {
    const UnitLabel label = units.LabelOf(*units.Find(row.code), row.languages);
    EXPECT_EQ(label.symbol, row.symbol) << row.name;
    EXPECT_EQ(label.name, row.text) << row.name;
  }
  EXPECT_EQ(units.NameOfKind(10, {"ru"}), "\u0434\u043B\u0438\u043D\u0430");
  EXPECT_EQ(units.NameOfKind(10, {}), "length");
  EXPECT_EQ(units.NameOfKind(11, {}), "kind 11");
  EXPECT_EQ(units.NameOfKind(11, {"ru"}), "\u043E\u0431\u044A\u0451\u043C")
      << "only a language names it";
  EXPECT_EQ(units.NameOfKind(99, {}), "kind 99");
}

struct Search {
  const char* name;
  const char* text;
  std::int32_t kind;
  LanguageChain languages;
  Result result;
  Codes codes;
};

void Check(const UnitSet& units, const std::vector<Search>& searches) {
  for (const Search& row : searches) {
    const FoundUnits found = units.FindText(row.text, row.kind, row.languages);
    EXPECT_EQ(found.result, row.result) << row.name;
    EXPECT_EQ(CodesOf({found.units.begin(), found.units.end()}), row.codes) << row.name;
  }
}

TEST(UnitSet, FindsUnitsByTheirTexts) {
  const UnitSet units(Collection(), nullptr);
  Check(units,
        {
            {"a symbol", "m", 0, {}, Result::kFound, {10001}},
            {"a name", "metre", 0, {}, Result::kFound, {10001}},
            {"a symbol of its kind", "m", 10, {}, Result::kFound, {10001}},
            {"the empty text", "", 0, {}, Result::kNone, {}},
            {"an unknown text", "furlong", 0, {}, Result::kNone, {}},
            {"a part of a symbol", "mi", 0, {}, Result::kNone, {}},
            {"the symbol of a kind", "L", 0, {}, Result::kNone, {}},
            {"the name of a kind", "length", 0, {}, Result::kNone, {}},
            {"lower case", "mW", 0, {}, Result::kFound, {13001}},
            {"upper case", "MW", 0, {}, Result::kFound, {13002}},
            {"another case", "Mw", 0, {}, Result::kNone, {}},

            // 1. One language after the other, exactly this text
            {"a text of a language", "\u043C", 0, {"ru"}, Result::kFound, {10001}},
            {"the unit's own text behind that of a language",
             "m",
             0,
             {"ru"},
             Result::kFound,
             {10001}},
            {"a language before the units", "m", 0, {"xx"}, Result::kFound, {10002}},
            {"the second language", "m", 0, {"ru", "xx"}, Result::kFound, {10002}},
            {"an unknown language", "m", 0, {"yy"}, Result::kFound, {10001}},
            {"a no-break space", "US\u00A0gal", 0, {}, Result::kFound, {15001}},

            // 2. What is typed
            {"a raised digit is typed", "m3", 0, {}, Result::kFound, {11001}},
            {"with a circumflex", "m^3", 0, {}, Result::kFound, {11001}},
            {"a typed digit is raised", "dm\u00B3", 0, {}, Result::kFound, {11002}},
            {"micro", "um", 0, {}, Result::kFound, {16001}},
            {"Greek mu", "\u03BCm", 0, {}, Result::kFound, {16001}},
            {"the exact text of the units before what is typed for a language",
             "dm3",
             0,
             {"xx"},
             Result::kFound,
             {11002}},
            {"what is typed for a language before that for the units",
             "dm^3",
             0,
             {"xx"},
             Result::kFound,
             {13001}},

            // 3. Points
            {"points and their differences", "\u00B0C", 0, {}, Result::kFound, {18002}},
            {"their names", "kelvin", 0, {}, Result::kFound, {18001}},
            {"points, asked for", "K", 18, {}, Result::kFound, {18001}},
            {"differences, asked for", "\u00B0C", 19, {}, Result::kFound, {19002}},

            // Not one
            {"two kinds", "minute", 0, {}, Result::kSeveral, {12005, 40003}},
            {"one of the two kinds", "minute", 40, {}, Result::kFound, {40003}},
            {"neither kind", "minute", 10, {}, Result::kOtherKind, {12005, 40003}},
            {"another kind", "m", 12, {}, Result::kOtherKind, {10001}},
            {"another kind, typed", "m3", 10, {}, Result::kOtherKind, {11001}},
            {"another kind in a language", "m", 12, {"xx"}, Result::kOtherKind, {10002}},
            {"a kind that is not there", "m", 77, {}, Result::kOtherKind, {10001}},
            {"a Cyrillic letter", "\u043C", 0, {}, Result::kLookalike, {10001}},
            {"a Cyrillic letter of another kind", "\u043C", 12, {}, Result::kNone, {}},
            {"a Latin letter in a Cyrillic symbol", "\u043A\u0412", 0, {"ru"}, Result::kNone, {}},
        });
}

TEST(UnitSet, NamesAtMostEightUnitsOfOneText) {
  std::string bytes;
  Codes first;
  for (int kind = 50; kind < 60; ++kind) {
    bytes += std::to_string(kind) + "001\t1\t\tu\t\n";
    if (first.size() < 8) {
      first.push_back(1000 * kind + 1);
    }
  }
  const UnitSet units(CollectUnits(bytes), nullptr);
  Check(units, {{"ten units", "u", 0, {}, Result::kSeveral, first},
                {"the last one", "u", 59, {}, Result::kFound, {59001}}});
}

TEST(UnitSet, ASymbolOfWhatDoesNotCountIsNotTheEmptyText) {
  const UnitSet units(CollectUnits("10001\t1\t\t^\tcaret\n"), nullptr);
  Check(units, {{"no text", "", 0, {}, Result::kNone, {}},
                {"the symbol", "^", 0, {}, Result::kFound, {10001}}});
}

TEST(UnitSet, AUnitWithOneTextTwiceIsOne) {
  const UnitSet units(CollectUnits("10001\t1\t\tmetre\tmetre\n"), nullptr);
  Check(units, {{"symbol and name", "metre", 0, {}, Result::kFound, {10001}}});
}

TEST(UnitSet, TellsWhatItDrops) {
  struct Row {
    const char* name;
    std::string bytes;
    Codes stay;
    Lines problems;
  };
  const Row rows[] = {
      {"nothing", "", {}, {}},
      {"points and differences", "18001\t1\t\tK\t\t19001\n19001\t1\t\tdK\t\n", {18001, 19001}, {}},
      {"no unit of differences",
       "18001\t1\t\tK\t\t19001\n19002\t1\t\tdK\t\n",
       {19002},
       {"error: A unit of points is dropped: there is no unit with the code of its differences "
        "(unit \"18001\")"}},
      {"another factor",
       "18001\t1\t\tK\t\t19001\n19001\t2\t\tdK\t\n",
       {19001},
       {"error: A unit of points is dropped: the unit of its differences has another factor (unit "
        "\"18001\")"}},
      {"points as differences",
       "18001\t1\t\tK\t\t19001\n19001\t1\t\tdK\t\t20001\n20001\t1\t\tddK\t\n",
       {19001, 20001},
       {"error: A unit of points is dropped: the unit of its differences is one of points (unit "
        "\"18001\")"}},
      {"differences of two kinds",
       "18001\t1\t\tK\t\t19001\n18002\t1\t5\tC\t\t20001\n19001\t1\t\tdK\t\n20001\t1\t\tdC\t\n",
       {18001, 19001, 20001},
       {"error: A unit of points is dropped: other units of its kind have differences of another "
        "kind (unit \"18002\")"}},
      {"a point that is dropped does not decide for its kind",
       "18001\t2\t\tK\t\t19001\n18002\t1\t5\tC\t\t20001\n19001\t1\t\tdK\t\n20001\t1\t\tdC\t\n",
       {18002, 19001, 20001},
       {"error: A unit of points is dropped: the unit of its differences has another factor (unit "
        "\"18001\")"}},
      {"a unit without points in a kind of points",
       "18001\t1\t\tK\t\t19001\n18900\t0.001\t\tmK\t\n19001\t1\t\tdK\t\n",
       {18001, 19001},
       {"error: A unit is dropped: the first unit of its kind is one of points (unit \"18900\")"}},
      {"points in a kind without them",
       "18001\t1\t\tK\t\n18002\t1\t273.15\tC\t\t19001\n19001\t1\t\tdK\t\n",
       {18001, 19001},
       {"error: A unit of points is dropped: the first unit of its kind is not one of points (unit "
        "\"18002\")"}},
      {"a unit of differences that is dropped itself",
       "18001\t1\t\tK\t\t19002\n19001\t1\t\tp\t\t20001\n19002\t1\t\tq\t\n20001\t1\t\tr\t\n",
       {19001, 20001},
       {"error: A unit of points is dropped: there is no unit with the code of its differences "
        "(unit \"18001\")",
        "error: A unit is dropped: the first unit of its kind is one of points (unit \"19002\")"}},
  };
  for (const Row& row : rows) {
    ProblemList problems;
    const UnitSet units(CollectUnits(row.bytes), &problems);
    EXPECT_EQ(CodesOf(units.UnitsOf(0)), row.stay) << row.name;
    EXPECT_EQ(Printed(problems), row.problems) << row.name;
    const UnitSet again(CollectUnits(row.bytes), nullptr);
    EXPECT_EQ(CodesOf(again.UnitsOf(0)), row.stay) << row.name << ", without a list";
  }
}

TEST(UnitSet, TellsFactorsOfZeroAndNamesOfNoUnit) {
  UnitCollection collection;
  ReadFourFields("10001 1 m metre\n30001 0 K koefficient\n", "f", collection, nullptr);
  ReadUnitNames("de\n10001\tm\tMeter\n10009\tft\tFu\u00DF\n20\tS\tFl\u00E4che\n", "n", collection,
                nullptr);
  ProblemList problems;
  const UnitSet units(collection, &problems);
  EXPECT_EQ(CodesOf(units.UnitsOf(0)), (Codes{10001, 30001}));
  EXPECT_EQ(
      Printed(problems),
      (Lines{"warning: The factor of a unit is 0: arithmetic and conversion give NaN: K (unit "
             "\"30001\")",
             "note: A name belongs to no unit (unit \"10009\") (language \"de\")",
             "note: A name belongs to no unit (unit \"20000\") (language \"de\")"}));
}

}  // namespace
