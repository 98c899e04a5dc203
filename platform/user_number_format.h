// How the user writes numbers, by the regional settings of the system.
#pragma once

#include <string>

#include "text/digit_groups.h"

namespace KelmoLibs::Localize {

/// The marks are UTF-8, of at most Cldr::kLongestMark bytes.
struct UserNumberFormat {
  std::string decimalMark = ".";
  std::string groupMark;  // empty: no groups
  std::string minusSign = "-";
  DigitGroups groups;
};

/// On Linux: that of the locale which LC_ALL, LC_NUMERIC or LANG names; if the system does not have
/// that, the format above. Does not change the locale of the process. Throws only std::bad_alloc.
UserNumberFormat NumberFormatOfUser();

}  // namespace KelmoLibs::Localize
