// What to do about a unit table that is not UTF-8.
#pragma once

#include "lang/finding.h"
#include "lang/reading/unit_file.h"

namespace KelmoLibs::Lang {

/// Adds to `finding` the encoding that the file probably has, and how to mend it. Precondition: the
/// file is UTF-16, or the library stops at a byte that is not UTF-8.
void AddEncodingMend(const UnitFile& file, Finding& finding);

}  // namespace KelmoLibs::Lang
