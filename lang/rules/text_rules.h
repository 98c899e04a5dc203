// The rules of a single text, which CheckPunctuation and CheckWords run.
#pragma once

#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

// Of punctuation.
void CheckEnd(const TextCheck& check);           // end_marks.cpp: end-mark, full-stop
void CheckBrackets(const TextCheck& check);      // brackets.cpp
void CheckAccelerators(const TextCheck& check);  // accelerators.cpp

// Of characters and words.
void CheckInvisibleCharacters(const TextCheck& check);  // invisible_characters.cpp
void CheckMixedScripts(const TextCheck& check);         // mixed_scripts.cpp
void CheckUntranslated(const TextCheck& check);         // untranslated.cpp
void CheckDoubled(const TextCheck& check);              // doubled.cpp: doubled-word, doubled-blank
void CheckLength(const TextCheck& check);               // length.cpp

}  // namespace KelmoLibs::Lang
