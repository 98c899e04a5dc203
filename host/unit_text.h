// Compares symbols and names of units as people see and type them.
#pragma once

#include <cstdint>
#include <string_view>

namespace KelmoLibs::Host {

/// When two texts are the same.
enum class UnitTextMatch {
  kExact,     // but for the kind of blanks
  kKeyboard,  // also characters that keyboards lack, as what is typed for them: m3 for a raised 3
  kLooks      // also letters of other scripts that look the same: a Cyrillic em and a Latin m
};

/// Whether the texts are the same. Precondition: they are UTF-8.
bool IsSameUnitText(std::string_view left, std::string_view right, UnitTextMatch match) noexcept;

/// A hash, which is equal for texts that are the same by kLooks. Its high bits are the best. The same
/// precondition.
std::uint64_t HashOfUnitText(std::string_view text) noexcept;

}  // namespace KelmoLibs::Host
