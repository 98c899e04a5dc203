// Keys with a space in them: "menu. open" and "menu open" instead of "menu.open".
#pragma once

#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

/// The base's entry for which `entry` was meant: its key is the key of `entry` and the first word of
/// its text, joined or with a dot, underscore or hyphen between them, and the files have no such key.
/// Nothing without a base, and if `entry` may be an entry as it is.
FoundEntry FindSplitKey(const FileCheck& check, const Entry& entry);

}  // namespace KelmoLibs::Lang
