#include "host/unit_row.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/invalid_utf8.h"

namespace {

using namespace KelmoLibs::Host;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(UnitRow, CodesHaveAKind) {
  struct Row {
    std::int32_t code;
    bool isKind;
    std::int32_t kind;
    std::int32_t normal;
  };
  const Row rows[] = {
      {1, true, 1, 1000},
      {10, true, 10, 10000},
      {99, true, 99, 99000},
      {1000, true, 1, 1000},
      {10000, true, 10, 10000},
      {10001, false, 10, 10001},
      {10999, false, 10, 10999},
      {1000001, false, 1000, 1000001},
      {2147483000, true, 2147483, 2147483000},
      {2147483647, false, 2147483, 2147483647},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FaultOfCode(row.code), "") << row.code;
    EXPECT_EQ(IsKindCode(row.code), row.isKind) << row.code;
    EXPECT_EQ(KindOf(row.code), row.kind) << row.code;
    EXPECT_EQ(NormalCode(row.code), row.normal) << row.code;
  }
}

TEST(UnitRow, CodesThatAreNotAllowed) {
  for (const std::int32_t code : {0, -1, -10001, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(FaultOfCode(code), "the code is not above 0") << code;
  }
  for (const std::int32_t code : {100, 555, 999}) {
    EXPECT_EQ(FaultOfCode(code), "codes from 100 to 999 are not allowed") << code;
  }
}

TEST(UnitRow, TextsThatAreNotAllowed) {
  struct Row {
    const char* name;
    std::string text;
    const char* fault;
  };
  const Row rows[] = {
      {"empty", "", ""},
      {"a letter", "m", ""},
      {"a blank inside", "US gal", ""},
      {"digits inside", "m3", ""},
      {"a quotation mark", "\u2033", ""},
      {"255 bytes", std::string(255, 'x'), ""},
      {"256 bytes", std::string(256, 'x'), "the name has more than 255 bytes"},
      {"a zero", std::string("a\0b", 3), "the name has a control character"},
      {"a tab", "a\tb", "the name has a control character"},
      {"an escape", "a\x1B", "the name has a control character"},
      {"a delete", "a\x7F", "the name has a control character"},
      {"a blank in front", " a", "the name begins or ends with a blank"},
      {"a blank behind", "a ", "the name begins or ends with a blank"},
      {"a no-break space in front", "\u00A0a", "the name begins or ends with a blank"},
      {"a no-break space behind", "a\u00A0", "the name begins or ends with a blank"},
      {"a narrow no-break space behind", "a\u202F", "the name begins or ends with a blank"},
      {"only a blank", " ", "the name begins or ends with a blank"},
      {"a digit", "3a", "the name begins like a number"},
      {"an Arabic digit", "\u0663a", "the name begins like a number"},
      {"the last Persian digit", "\u06F9a", "the name begins like a number"},
      {"the character behind it", "\u06FAa", ""},
      {"a plus", "+a", "the name begins like a number"},
      {"a minus", "-a", "the name begins like a number"},
      {"a minus sign", "\u2212a", "the name begins like a number"},
      {"a point", ".a", "the name begins like a number"},
      {"a comma", ",a", "the name begins like a number"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FaultOfUnitText(row.text, "name"), row.fault) << row.name;
  }
  for (const InvalidUtf8& invalid : kInvalidUtf8) {
    EXPECT_EQ(FaultOfUnitText("a" + std::string(invalid.bytes), "symbol"),
              "the symbol is not UTF-8")
        << invalid.name;
  }
}

UnitRow Unit(std::int32_t code, double factor, double offset, std::int32_t difference) {
  UnitRow row;
  row.code = code;
  row.factor.high = factor;
  row.offset.high = offset;
  row.difference = difference;
  row.symbol = "u";
  row.name = "unit";
  return row;
}

TEST(UnitRow, FaultsAreFound) {
  constexpr const char* kFactor = "the factor is not a number above 0";
  constexpr const char* kOffset = "the offset is not a number";
  constexpr const char* kKind = "a kind has no factor, no offset and no difference";
  constexpr const char* kDifference = "the unit of the differences is not a unit of another kind";
  struct Row {
    const char* name;
    UnitRow row;
    const char* fault;
  };
  const Row rows[] = {
      {"a unit", Unit(10001, 2, 0, 0), ""},
      {"a unit of points", Unit(18002, 1, 273.15, 19002), ""},
      {"points without an offset", Unit(18001, 1, 0, 19001), ""},
      {"a negative offset", Unit(18002, 1, -5, 19002), ""},
      {"a kind", Unit(10000, 0, 0, 0), ""},
      {"a kind by its number", Unit(10, 0, 0, 0), ""},
      {"the code 0", Unit(0, 1, 0, 0), "the code is not above 0"},
      {"a code that is not allowed", Unit(500, 1, 0, 0), "codes from 100 to 999 are not allowed"},
      {"a kind with a factor", Unit(10000, 1, 0, 0), kKind},
      {"a kind with an offset", Unit(10000, 0, 1, 0), kKind},
      {"a kind with a difference", Unit(10000, 0, 0, 20001), kKind},
      {"the factor 0", Unit(10001, 0, 0, 0), kFactor},
      {"a negative factor", Unit(10001, -1, 0, 0), kFactor},
      {"an infinite factor", Unit(10001, kInfinity, 0, 0), kFactor},
      {"a factor that is NaN", Unit(10001, kNaN, 0, 0), kFactor},
      {"a subnormal factor", Unit(10001, 1e-310, 0, 0), kFactor},
      {"an infinite offset", Unit(18002, 1, kInfinity, 19002), kOffset},
      {"an offset that is NaN", Unit(18002, 1, kNaN, 19002), kOffset},
      {"an offset without a difference", Unit(18002, 1, 1, 0),
       "a unit with an offset needs the code of the unit of its differences"},
      {"a difference of the same kind", Unit(18002, 1, 0, 18001), kDifference},
      {"a kind as the difference", Unit(18002, 1, 0, 19000), kDifference},
      {"the number of a kind as the difference", Unit(18002, 1, 0, 19), kDifference},
      {"a negative code as the difference", Unit(18002, 1, 0, -19001), kDifference},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FaultOf(row.row), row.fault) << row.name;
  }
}

TEST(UnitRow, SymbolsOfUnitsAreNotEmpty) {
  UnitRow unit = Unit(10001, 1, 0, 0);
  unit.symbol = "";
  EXPECT_EQ(FaultOf(unit), "the symbol is empty");
  unit.symbol = "m";
  unit.name = "";
  EXPECT_EQ(FaultOf(unit), "") << "a name may be";
  unit.name = "5";
  EXPECT_EQ(FaultOf(unit), "the name begins like a number");
  UnitRow kind = Unit(10000, 0, 0, 0);
  kind.symbol = "";
  EXPECT_EQ(FaultOf(kind), "") << "those of kinds may be, too";
  kind.symbol = " L";
  EXPECT_EQ(FaultOf(kind), "the symbol begins or ends with a blank");
}

}  // namespace
