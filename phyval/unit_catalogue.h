// The catalogue of units: rows in a fixed order, asked by code or by text. Every answer scans the
// rows as they stand, because hosts reach them through the public fields of their values.
#pragma once

#include <vector>

#include "kelmo_localizer.h"

namespace KelmoLibs::Localize::Phyval {

/// A vector, although its elements cannot be assigned: rows are only ever appended, or all removed.
using UnitCatalogue = std::vector<ValueType>;

/// The one of the process, built at load with the built-in rows (frame/library_state.cpp).
extern UnitCatalogue unitCatalogue;

/// The rows that the library has before a unit table is loaded.
UnitCatalogue BuiltInUnits();

/// Whether a code is that of a unit, and not of a quantity.
constexpr bool NamesAUnit(int code) noexcept { return code >= 100 && code % 1000 != 0; }

/// The first row with `code`, if that code names a unit; else null. Codes of quantities find
/// nothing, even where a row has them.
inline ValueType* FindUnit(UnitCatalogue& catalogue, int code) noexcept {
  if (NamesAUnit(code)) {
    for (ValueType& row : catalogue) {
      if (row.code == code) {
        return &row;
      }
    }
  }
  return nullptr;
}

/// The first row of a unit whose name or else whose symbol is `text`, to the character; else null.
/// A null `text` finds nothing. Nothing is copied.
ValueType* FindUnit(UnitCatalogue& catalogue, const wchar_t* text) noexcept;

}  // namespace KelmoLibs::Localize::Phyval
