// The number formats of languages.
#pragma once

#include <string_view>

#include "cldr/number_format.h"

namespace KelmoLibs::Cldr {

/// The format of the language that an id names: "de-AT", "pt_PT", "zh-Hant". Letters may be of
/// either case. For an id that the table does not have: that of the id without its last part, and
/// so on; null if the table has none of them. The format is not grouped.
const NumberFormat* FindNumberFormat(std::string_view id) noexcept;

}  // namespace KelmoLibs::Cldr
