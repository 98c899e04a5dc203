// How many columns a character takes on a terminal.
#pragma once

#include <cstddef>

namespace KelmoLibs::Lang {

/// 0 for marks that stand above or below another character, 2 for the wide characters of East Asia
/// and for emoji, 1 for all others.
unsigned DisplayWidth(char32_t character) noexcept;

/// Whether nobody sees the character, or nobody tells it from a space: blanks other than the space,
/// control and format characters, private characters.
bool IsInvisible(char32_t character) noexcept;

}  // namespace KelmoLibs::Lang
