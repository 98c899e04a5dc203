// Keys that look alike: letters of Latin, Cyrillic and Greek, composed and decomposed letters,
// invisible characters, full-width forms, dashes.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// `key` with a letter and combining marks for each composed letter (canonical decomposition).
/// Bytes that are not UTF-8 stay.
std::string Decompose(std::string_view key);

/// Whether one character is `letter` with `mark` on it.
bool HasComposedForm(char32_t letter, char32_t mark) noexcept;

/// A form of `key` that is equal for keys that look alike or differ only in capital letters of
/// ASCII. It is no text for people.
std::string LookAlikeForm(std::string_view key);

/// The Latin letter or sign of ASCII that looks like `character`; `character` itself if there is
/// none.
char32_t AsciiLookAlike(char32_t character) noexcept;

}  // namespace KelmoLibs::Lang
