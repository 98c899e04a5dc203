// Comparison and printing of localized units in tests.
#pragma once

#include <gtest/gtest.h>

#include <ostream>

#include "unittables/language_table.h"

namespace KelmoLibs::Localize {

inline bool operator==(const LocalizedUnit& left, const LocalizedUnit& right) {
  return left.symbol == right.symbol && left.name == right.name;
}

inline void PrintTo(const LocalizedUnit& unit, std::ostream* out) {
  *out << testing::PrintToString(unit.symbol) << " | " << testing::PrintToString(unit.name);
}

}  // namespace KelmoLibs::Localize
