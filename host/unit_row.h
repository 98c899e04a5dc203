// A unit, or a kind of units, as a loader collects them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/double_double.h"

namespace KelmoLibs::Host {

constexpr std::int32_t kCodesOfKind = 1000;

/// Whether a code is that of a kind: 10 and 10000 are that of length.
constexpr bool IsKindCode(std::int32_t code) noexcept {
  return code < 100 || code % kCodesOfKind == 0;
}

/// Number of the kind of a code that is allowed.
constexpr std::int32_t KindOf(std::int32_t code) noexcept {
  return code < kCodesOfKind ? code : code / kCodesOfKind;
}

/// One code for a kind: 10000 for 10. Other codes stay.
constexpr std::int32_t NormalCode(std::int32_t code) noexcept {
  return code < 100 ? code * kCodesOfKind : code;
}

struct UnitRow {
  std::int32_t code = 0;        // of a kind: 1000 times its number
  std::int32_t difference = 0;  // of points: code of the unit of their differences
  DoubleDouble factor;  // the low parts are 0 unless a file gives more digits than a double has
  DoubleDouble offset;
  std::string symbol;
  std::string name;

  bool IsKind() const noexcept { return IsKindCode(code); }
  bool IsPoint() const noexcept { return difference != 0; }
};

/// Why a code is not allowed; empty if it is.
std::string_view FaultOfCode(std::int32_t code) noexcept;

/// Why a text cannot be the symbol or the name of a unit; empty if it can.
std::string FaultOfUnitText(std::string_view text, std::string_view what);

/// Why a unit or kind is not allowed; empty if it is. Whether its difference exists shows later.
std::string FaultOf(const UnitRow& row);

}  // namespace KelmoLibs::Host
