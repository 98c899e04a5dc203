// Reads the physical values that users type.
#pragma once

#include <cstdint>
#include <string_view>

#include "cldr/number_format.h"
#include "host/problem_list.h"
#include "host/unit_set.h"
#include "kelmo/kelmo.h"

namespace KelmoLibs::Host {

struct TypedQuantityOptions {
  std::int32_t kind = 0;          // that is wanted; 0: any
  const UnitRow* unit = nullptr;  // of a number without a unit; null: each number needs one
  double absoluteTolerance = 0;
  double relativeTolerance = 0;  // if both are 0: one unit of the last digit
};

/// Whether numbers of the format can be read: its marks differ, and do not begin with a digit or a
/// letter.
bool CanBeRead(const Cldr::NumberFormat& format) noexcept;

/// Reads a quantity: see kelmo_quantity_read. Precondition: CanBeRead(format).
kelmo_status ReadQuantity(const UnitSet& units, const LanguageChain& languages,
                          std::string_view text, const TypedQuantityOptions& options,
                          const Cldr::NumberFormat& format, kelmo_quantity& result,
                          ProblemList* problems) noexcept;

/// Finds a unit by its symbol or name. `column`: of the text, for problems; 0 if it is a whole text.
kelmo_status FindUnitByText(const UnitSet& units, const LanguageChain& languages, std::int32_t kind,
                            std::string_view text, std::uint32_t column, const UnitRow*& result,
                            ProblemList* problems) noexcept;

}  // namespace KelmoLibs::Host
