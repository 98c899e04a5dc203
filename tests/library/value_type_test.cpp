// A row of the catalogue of units, through the exports.

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

#include "kelmo_localizer.h"
#include "tests/abi/class_layout.h"

using KelmoLibs::Localize::Phyval::ValueType;

namespace {

static_assert(!std::is_copy_assignable_v<ValueType> && !std::is_move_assignable_v<ValueType>,
              "the library exports no assignment");
static_assert(!std::is_default_constructible_v<ValueType>);

void ExpectRow(const ValueType& row, int code, double factor, const std::wstring& symbol,
               const std::wstring& name) {
  EXPECT_EQ(row.code, code);
  EXPECT_EQ(row.factor, factor);
  EXPECT_EQ(row.symbol, symbol);
  EXPECT_EQ(row.name, name);
}

TEST(ValueType, SplitsItsCodeIntoQuantityAndUnit) {
  const struct {
    const char* name;
    int code;
    int stype;
    int sid;
  } rows[] = {
      {"a quantity in its short form", 10, 10, 0},
      {"its first unit", 10001, 10, 1},
      {"its second unit", 10002, 10, 2},
      {"the radian", 40002, 40, 2},
      {"the last code that is a quantity by itself", 99, 99, 0},
      {"the first code of three digits", 100, 0, 100},
      {"the last one", 999, 0, 999},
      {"the smallest code with a quantity", 1000, 1, 0},
      {"a quantity in its long form", 10000, 10, 0},
      {"the last unit of a quantity", 10999, 10, 999},
      {"zero", 0, 0, 0},
      {"negative", -5, -5, 0},
      {"negative, with the digits of a unit", -10001, -10001, 0},
      {"the largest", 2147483647, 2147483, 647},
      {"the smallest", -2147483647 - 1, -2147483647 - 1, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ValueType type(row.code, 1.0, L"s", L"n");
    EXPECT_EQ(type.GetStype(), row.stype);
    EXPECT_EQ(type.GetSid(), row.sid);
  }
}

TEST(ValueType, KeepsCopiesOfItsTexts) {
  std::wstring symbol = L"a symbol that needs memory of its own";
  std::wstring name = L"a name that needs memory of its own";
  const ValueType row(20001, 2.5, symbol.c_str(), name.c_str());
  symbol.assign(symbol.size(), L'x');
  name.assign(name.size(), L'x');
  ExpectRow(row, 20001, 2.5, L"a symbol that needs memory of its own",
            L"a name that needs memory of its own");
}

TEST(ValueType, TakesEmptyTexts) { ExpectRow(ValueType(0, 0.0, L"", L""), 0, 0.0, L"", L""); }

TEST(ValueType, CopiesAreIndependent) {
  ValueType row(20001, 2.5, L"m2", L"square meter, in many words");
  const ValueType copy(row);
  row.symbol = L"changed";
  row.name[0] = L'S';
  row.code = 1;
  ExpectRow(copy, 20001, 2.5, L"m2", L"square meter, in many words");
}

TEST(ValueType, MovingCopiesAndLeavesTheSourceAsItIs) {
  ValueType row(20001, 2.5, L"a symbol that needs memory of its own",
                L"square meter, in many words");
  const ValueType moved(std::move(row));
  // NOLINTNEXTLINE(bugprone-use-after-move): that is the claim
  ExpectRow(row, 20001, 2.5, L"a symbol that needs memory of its own",
            L"square meter, in many words");
  ExpectRow(moved, 20001, 2.5, L"a symbol that needs memory of its own",
            L"square meter, in many words");
  EXPECT_NE(moved.name.data(), row.name.data());
}

}  // namespace
