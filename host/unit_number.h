// Factors and offsets in files of units.
#pragma once

#include <optional>
#include <string_view>

#include "host/double_double.h"

namespace KelmoLibs::Host {

/// The number that `text` is: a decimal number such as `-0.0254` or `1e-6`, or a fraction of two of
/// them, such as `5/9`. Its high part is the double nearest to the number; the low part has the digits
/// behind it, unless the number has more than 18 digits or a power of ten beyond 10^22 or 10^-22. The
/// quotient of such numbers may be the neighbour of the nearest double. Nothing if it is no number, or
/// too large for a double. The decimal mark is a point under every locale.
std::optional<DoubleDouble> ReadUnitNumber(std::string_view text) noexcept;

}  // namespace KelmoLibs::Host
