// Dictionaries and language unit tables as nobody would write them, and some as everybody does.
#pragma once

#include <string>

#include "tests/model/vocabulary.h"

std::string DictionaryBytes(Vocabulary& words);
std::string LanguageTableBytes(Vocabulary& words);
