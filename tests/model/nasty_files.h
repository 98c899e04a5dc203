// Dictionaries and language unit tables as nobody would write them, and some as everybody does.
#pragma once

#include <string>

#include "tests/support/random_numbers.h"

/// A word in UTF-8, one of few: ids and keys that hosts ask for, and that files hold.
std::string AnyWord(RandomNumbers& random);

std::string DictionaryBytes(RandomNumbers& random);
std::string LanguageTableBytes(RandomNumbers& random);
