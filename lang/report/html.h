// Texts as parts of an HTML page.
#pragma once

#include <string>
#include <string_view>

#include "lang/texts/sentence.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

/// `text` for the content of an element or a quoted attribute. What nobody can see in it, and what
/// is not UTF-8, becomes visible as in VisibleText.
std::string HtmlOf(std::string_view text);

/// The same, with marks around what was made visible.
std::string HtmlOfSource(std::string_view bytes);

/// The text of the sentence; each argument has a direction of its own, by its first letter.
std::string HtmlOf(const Sentence& sentence, const Texts& texts);

/// `text` with a direction of its own.
std::string Isolated(std::string_view text);

}  // namespace KelmoLibs::Lang
