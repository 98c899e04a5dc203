// What the formats for programs have in common.
#pragma once

#include <string>
#include <string_view>

#include "lang/report/report.h"

namespace KelmoLibs::Lang {

/// The texts of the formats for programs: always English.
const Texts& EnglishTexts();

/// The sentence in English, without invisible characters.
std::string EnglishText(const Sentence& sentence);

/// What to do, in English: the sentence, or else the command. May be empty.
std::string EnglishMend(const Finding& finding);

/// The message, the hint and the mend in English, each in a line.
std::string EnglishLines(const Finding& finding);

/// What makes a finding the same one in another run, also if lines were added in front of it: the
/// rule, the key, and the arguments of the message that are no numbers. Parts end with a NUL.
std::string IdentityOf(const Finding& finding);

/// 16 hexadecimal digits that are others for another identity.
std::string FingerprintOf(std::string_view identity);

}  // namespace KelmoLibs::Lang
