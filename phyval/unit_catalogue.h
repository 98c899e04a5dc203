// The catalogue of units: rows in a fixed order, looked up by code or by text. A lookup reads all
// rows anew and keeps no index, because hosts can change the rows through the public fields of
// their values.
#pragma once

#include <vector>

#include "kelmo_localizer.h"

namespace KelmoLibs::Localize::Phyval {

/// The elements cannot be assigned: rows are only appended, or all removed.
using UnitCatalogue = std::vector<ValueType>;

/// The catalogue of the process. It has the built-in rows when the library is loaded
/// (frame/library_state.cpp).
extern UnitCatalogue unitCatalogue;

/// The rows before a unit table is loaded.
UnitCatalogue BuiltInUnits();

/// Whether `code` is the code of a unit, and not of a quantity.
constexpr bool NamesAUnit(int code) noexcept { return code >= 100 && code % 1000 != 0; }

/// The first row with `code`, or null. Null also for the code of a quantity, even if a row has it.
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

/// The first row of a unit that has exactly `text` as its name or its symbol, or null. `text` is
/// zero-terminated; null finds nothing. Allocates nothing.
ValueType* FindUnit(UnitCatalogue& catalogue, const wchar_t* text) noexcept;

}  // namespace KelmoLibs::Localize::Phyval
