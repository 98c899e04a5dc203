// Which code page the bytes of a file may be in, by the letters that they would be.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "lang/unicode/code_page.h"

namespace KelmoLibs::Lang {

struct CodePageGuess {
  CodePage page = CodePage::kWindows1252;
  std::optional<CodePage> other;  // nearly as likely, and its letters are others
};

/// Guesses from `lines`, which are not UTF-8. `language` is a part of the id ("ru"), or empty. It
/// decides where the letters alone do not. Nothing if no code page gives words, or if the language
/// is written in none of these code pages.
std::optional<CodePageGuess> GuessCodePage(const std::vector<std::string_view>& lines,
                                           std::string_view language);

/// Whether a line that is not UTF-8 is in UTF-8 but for a few damaged letters, and not in a code
/// page: at least as many characters of several bytes are whole as bytes are damaged, and no code
/// page gives words.
bool IsDamagedUtf8(std::string_view line);

}  // namespace KelmoLibs::Lang
