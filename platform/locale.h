// Numbers as text under the locale of the user, or of the host.
#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <string>

namespace KelmoLibs::Localize {

/// Numbers are printed in fixed notation with 0 to kMaxDecimals decimals. The longest text has a
/// sign, all integer digits of the largest double, the separator and the decimals.
constexpr int kMaxDecimals = 9;
constexpr std::size_t kMaxNumberLength =
    1 + (std::numeric_limits<double>::max_exponent10 + 1) + 1 + kMaxDecimals;

/// `number` in fixed notation with `decimals` decimals and the decimal separator that the user
/// has set in the system. The locale of the C runtime is the user's during the call, in the whole
/// process. If the user's locale is not installed, the current one is used.
///
/// Afterwards the locale is the previous one, also if the call throws (only std::bad_alloc). The
/// one exception: the runtime twice finds no memory to restore it.
std::wstring FormatUnderUserLocale(double number, int decimals);

/// `number` in fixed notation with `decimals` decimals, as a new wide stream prints it under the
/// global C++ locale of the host. Nothing if that locale is the classic one. It always is on
/// Windows: no host can reach the global locale of the runtime that is linked into the library.
///
/// Throws std::bad_alloc, and any exception that a facet of the host makes the stream throw.
std::optional<std::wstring> FormatUnderGlobalLocale(double number, int decimals);

}  // namespace KelmoLibs::Localize
