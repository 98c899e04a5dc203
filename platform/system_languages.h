// The languages in which the user wants to read.
#pragma once

#include <string>
#include <vector>

namespace KelmoLibs::Localize {

/// Ids such as "de-AT" or "sr-Latn-RS", the first choice first, each once. On Linux: the languages
/// of LANGUAGE, then that of the first of LC_ALL, LC_MESSAGES and LANG that is set; none if that is
/// "C" or "POSIX". Throws only std::bad_alloc.
std::vector<std::string> SystemLanguages();

}  // namespace KelmoLibs::Localize
