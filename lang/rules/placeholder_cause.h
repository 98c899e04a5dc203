// Why a placeholder is missing: a form of it that the program does not see.
#pragma once

#include <string_view>

#include "lang/rules/placeholder_syntax.h"

namespace KelmoLibs::Lang {

struct PlaceholderCause {
  std::string_view where;  // the damaged placeholder, a view into the text; empty: not found
  std::string_view hint;   // key of the sentence that says what is wrong
};

/// Looks in `text` for what was meant to be `missing`: with full-width characters, digits of another
/// script, letters that look alike, capital letters, a blank too much, other brackets, or the wrong
/// way round. What the program sees as a placeholder of the base is not meant: `found` are the
/// placeholders of the text, `base` those of the base. Texts of more than 10,000 bytes are not looked
/// into.
PlaceholderCause CauseOfMissing(const Placeholder& missing, std::string_view text,
                                const Placeholders& found, const Placeholders& base);

}  // namespace KelmoLibs::Lang
