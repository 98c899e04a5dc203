// Rows of units, for comparisons of whole catalogues.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "kelmo_localizer.h"
#include "tests/support/bits.h"

struct UnitRow {
  int code;
  double factor;
  std::wstring symbol;
  std::wstring name;

  friend bool operator==(const UnitRow& left, const UnitRow& right) {
    return left.code == right.code && BitsOf(left.factor) == BitsOf(right.factor) &&
           left.symbol == right.symbol && left.name == right.name;
  }
  friend void PrintTo(const UnitRow& row, std::ostream* out) {
    *out << row.code << " | " << testing::PrintToString(row.factor) << " | "
         << testing::PrintToString(row.symbol) << " | " << testing::PrintToString(row.name);
  }
};

using UnitRows = std::vector<UnitRow>;

inline UnitRows RowsOf(const std::vector<KelmoLibs::Localize::Phyval::ValueType>& catalogue) {
  UnitRows rows;
  for (const auto& unit : catalogue) {
    rows.push_back({unit.code, unit.factor, unit.symbol, unit.name});
  }
  return rows;
}

/// The catalogue after the load of the library.
inline const UnitRows kBuiltInUnits = {
    {10, 0.0, L"L", L"length"},
    {10001, 1.0, L"\u043C", L"meter"},  // Cyrillic em
    {10002, 0.0273, L"in", L"inch"},
    {20, 0.0, L"S", L"area"},
    {20001, 1.0, L"m2", L"square meter"},
    {30001, 1.0, L"%", L"koefficient"},
    {40, 0.0, L"angl", L"plane angle"},
    {40001, 1.0, L"\u00B0", L"degree"},  // degree sign
    {40002, 57.29577951308232, L"rad", L"radian "},
};

/// The catalogue after a start.
inline const UnitRows kDefaultUnits = {
    {10, 0.0, L"L", L"length "},
    {10001, 1.0, L"\u043C", L"meter "},  // Cyrillic em
    {10002, 0.0273, L"in", L"inch "},
    {20, 0.0, L"S", L"area "},
    {30001, 0.0, L"K", L"koefficient "},
    {40001, 1.0, L"\u00B0", L"degree "},  // degree sign
    {40002, 57.29577951308232, L"rad", L"radian "},
};
