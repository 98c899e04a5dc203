#include "phyval/unit_catalogue.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "tests/support/unit_rows.h"

namespace {

using namespace KelmoLibs::Localize::Phyval;

// The index of `row` in the catalogue, -1 for null.
std::ptrdiff_t IndexOf(const ValueType* row, const UnitCatalogue& catalogue) {
  return row != nullptr ? row - catalogue.data() : -1;
}

TEST(UnitCatalogue, HasTheBuiltInRowsInOrder) {
  EXPECT_EQ(RowsOf(BuiltInUnits()), kBuiltInUnits);
  EXPECT_EQ(RowsOf(unitCatalogue), kBuiltInUnits);
}

TEST(UnitCatalogue, FindsTheFirstUnitWithACode) {
  UnitCatalogue catalogue = {
      {10, 0.0, L"L", L"length"},        {10000, 0.0, L"L", L"long form"},
      {-10001, 1.0, L"n", L"negative"},  {10001, 1.0, L"m", L"first"},
      {10001, 2.0, L"m", L"second"},     {100, 1.0, L"h", L"of the quantity 0"},
      {INT_MAX, 1.0, L"x", L"largest"},  {99, 1.0, L"q", L"quantity"},
      {101, 1.0, L"i", L"one more"},     {0, 0.0, L"z", L"zero"},
      {INT_MIN, 1.0, L"s", L"smallest"},
  };
  const struct {
    const char* name;
    int code;
    std::ptrdiff_t index;
  } rows[] = {
      {"a quantity in its short form", 10, -1},
      {"a quantity in its long form", 10000, -1},
      {"a negative code", -10001, -1},
      {"two rows with the code", 10001, 3},
      {"three digits that end in 00", 100, 5},
      {"another code of the quantity 0", 101, 8},
      {"the largest", INT_MAX, 6},
      {"the largest code of two digits", 99, -1},
      {"zero", 0, -1},
      {"the smallest", INT_MIN, -1},
      {"no row with the code", 10003, -1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IndexOf(FindUnit(catalogue, row.code), catalogue), row.index);
  }
}

TEST(UnitCatalogue, FindsTheFirstUnitWithANameOrASymbol) {
  using namespace std::string_literals;
  UnitCatalogue catalogue = {
      {10, 0.0, L"L", L"length"},       {10001, 1.0, L"m", L"meter"},
      {10002, 0.5, L"in", L"inch"},     {10003, 1.0, L"x", L"y"},
      {10004, 1.0, L"y", L"x"},         {10005, 1.0, L"last", L"in"},
      {10006, 1.0, L"twin", L"twin"},   {10, 1.0, L"late", L"of a quantity"},
      {10007, 1.0, L"late", L"a unit"}, {10008, 1.0, L"", L"without a symbol"},
      {10009, 1.0, L"nul", L"nul"},
  };
  catalogue.back().symbol = L"a\0b"s;
  const struct {
    const char* name;
    const wchar_t* text;
    std::ptrdiff_t index;
  } rows[] = {
      {"a name", L"meter", 1},
      {"a symbol", L"m", 1},
      {"a quantity's name", L"length", -1},
      {"a quantity's symbol", L"L", -1},
      {"another case", L"Meter", -1},
      {"a blank at the end", L"meter ", -1},
      {"a blank at the beginning", L" meter", -1},
      {"the beginning of a name", L"mete", -1},
      {"an earlier symbol wins over a later name", L"in", 2},
      {"an earlier name, which a later row has as its symbol", L"y", 3},
      {"an earlier symbol, which a later row has as its name", L"x", 3},
      {"equal name and symbol", L"twin", 6},
      {"a quantity before a unit with that symbol", L"late", 8},
      {"the empty text is a symbol", L"", 9},
      {"the part of a symbol before a NUL", L"a", -1},
      {"the text ends at its NUL", L"a\0b", -1},
      {"null", nullptr, -1},
      {"unknown", L"furlong", -1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IndexOf(FindUnit(catalogue, row.text), catalogue), row.index);
  }
}

TEST(UnitCatalogue, FindsNothingWhenEmpty) {
  UnitCatalogue catalogue;
  EXPECT_EQ(FindUnit(catalogue, 10001), nullptr);
  EXPECT_EQ(FindUnit(catalogue, L"meter"), nullptr);
  EXPECT_EQ(FindUnit(catalogue, L""), nullptr);
}

// The loader of the default table needs this: elements cannot be assigned.
TEST(UnitCatalogue, CanBeClearedAndFilledAgain) {
  UnitCatalogue catalogue = BuiltInUnits();
  catalogue.clear();
  for (int i = 0; i < 1000; ++i) {
    catalogue.emplace_back(10001 + i, 1.0, L"a symbol that needs memory of its own", L"name");
  }
  for (int i = 0; i < 999; ++i) {
    ASSERT_EQ(IndexOf(FindUnit(catalogue, 10001 + i), catalogue), i);
    ASSERT_EQ(catalogue[static_cast<std::size_t>(i)].symbol,
              L"a symbol that needs memory of its own");
  }
}

}  // namespace
