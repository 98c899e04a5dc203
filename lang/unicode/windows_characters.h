// What the C runtime of Windows says about single code units: the unit tables depend on it.
#pragma once

#include <cstdint>

namespace KelmoLibs::Lang {

/// Whether the code unit stays in a line of a unit table. If not, the library reads a blank in its
/// place. ASCII beside space, tab and the visible characters is not kept.
bool IsKeptByWindows(wchar_t unit) noexcept;

/// The integer at the start of `field`, which is zero-terminated, as Localize::IntegerField gives
/// it on Windows: the runtime there knows the digits of more scripts than ASCII, and more blanks in
/// front of a number.
std::int32_t WindowsIntegerField(const wchar_t* field);

}  // namespace KelmoLibs::Lang
