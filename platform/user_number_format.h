// How the user writes numbers, by the regional settings of the system.
#pragma once

#include <string>
#include <variant>

#include "text/digit_groups.h"

namespace KelmoLibs::Localize {

/// The marks are UTF-8, of at most Cldr::kLongestMark bytes.
struct UserNumberFormat {
  std::string decimalMark = ".";
  std::string groupMark;  // empty: no groups
  std::string minusSign = "-";
  DigitGroups groups;
};

/// What the system knows, or, if it lacks the settings of the user's language, the id of that.
using NumberFormatOrLanguage = std::variant<UserNumberFormat, std::string>;

/// On Linux: that of the locale which LC_ALL, LC_NUMERIC or LANG names; if the system does not have
/// that, the id of its language. Does not change the locale of the process. Throws only
/// std::bad_alloc.
NumberFormatOrLanguage NumberFormatOfUser();

}  // namespace KelmoLibs::Localize
