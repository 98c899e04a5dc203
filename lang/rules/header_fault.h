// Faults of the first line of a file, and a header that stands in another line.
#pragma once

#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

/// The key of the sentence that says what is wrong with the first line, or null. The file has a
/// first line.
const char* HeaderFault(const FileCheck& check);

/// The header, if another line stands in its place, as when the lines are sorted; null if there is
/// none. Its key is the language that the name of the file names, or any id if the name names none.
/// A key of the base and a key before a tab are no id.
const Entry* FindDisplacedHeader(const FileCheck& check);

}  // namespace KelmoLibs::Lang
