// The language of the person at the machine.
#pragma once

#include <string>

namespace KelmoLibs::Lang {

/// The code of the language that the user has set for texts, such as "de"; empty if there is none.
/// On Linux: the first of LC_ALL, LC_MESSAGES and LANG that is set.
std::string UserLanguage();

}  // namespace KelmoLibs::Lang
