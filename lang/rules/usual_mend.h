// What to do about findings whose rule has one answer for all of them.
#pragma once

#include <vector>

#include "lang/finding.h"

namespace KelmoLibs::Lang {

/// Adds a mend to each finding that has neither one nor a hint, if its message has a usual one.
void AddUsualMends(std::vector<Finding>& findings);

}  // namespace KelmoLibs::Lang
