// The work of UseLanguage and LANG: selects a dictionary, and looks up texts in it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dictionary/dictionary.h"
#include "frame/error_list.h"

namespace KelmoLibs::Localize {

/// Makes the dictionary `id` the current one and returns 0. If there is no such dictionary, appends
/// a message to `errors`, changes nothing else and returns -1.
std::int32_t SelectDictionary(std::wstring_view id, CurrentLanguage& currentLanguage,
                              const DictionaryTable& dictionaries, ErrorList& errors);

/// The text of `key` in the current dictionary: not a copy, valid as long as the dictionary. `key`
/// is zero-terminated; null is the empty key. If the dictionary or the key is missing, appends a
/// message to `errors` and returns emptyText. Allocates nothing, unless it appends a message that
/// is not in the list yet.
const wchar_t* FindText(const wchar_t* key, const CurrentLanguage& currentLanguage,
                        ErrorList& errors);

}  // namespace KelmoLibs::Localize
