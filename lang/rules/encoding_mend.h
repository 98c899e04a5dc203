// What to do about a file that is not UTF-8: for dictionaries and unit tables.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lang/finding.h"
#include "lang/reading/source_file.h"

namespace KelmoLibs::Lang {

/// The bytes beyond ASCII that `bytes` begin with; of many, only the first ones.
std::string_view BytesBeyondAscii(std::string_view bytes) noexcept;

/// Adds to `finding` the code page that the file probably has, and how to mend it. `samples` are
/// lines that are not UTF-8, `fault` the bytes that the hint shows in the guessed letters,
/// `language` the primary language of the file.
void AddCodePageMend(const SourceFile& source, const std::vector<std::string_view>& samples,
                     std::string_view fault, const std::string& language, Finding& finding);

/// Adds to `finding` how to mend a file in UTF-16. Precondition: the file is.
void AddUtf16Mend(const SourceFile& source, Finding& finding);

}  // namespace KelmoLibs::Lang
