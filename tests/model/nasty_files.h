// Random dictionaries and unit tables of languages: mostly unusual or malformed ones, and some
// usual ones.
#pragma once

#include <string>

#include "tests/model/vocabulary.h"

std::string DictionaryBytes(Vocabulary& words);
std::string LanguageTableBytes(Vocabulary& words);
