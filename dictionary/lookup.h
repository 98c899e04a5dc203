// The two questions that a host asks of the loaded dictionaries.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dictionary/dictionary.h"
#include "frame/error_list.h"

namespace KelmoLibs::Localize {

/// Makes `id` the current dictionary's and returns 0; where no dictionary has it, lists the message
/// and returns -1.
std::int32_t SelectDictionary(std::wstring_view id, CurrentLanguage& currentLanguage,
                              const DictionaryTable& dictionaries, ErrorList& errors);

/// What the current dictionary has for `key`, which ends with a zero, or is null and then means an empty one: its own text and no copy, valid as long as the table. A
/// missing dictionary or key is listed and gives emptyText. Finding a text takes no memory,
/// nor does missing one whose message is listed.
const wchar_t* FindText(const wchar_t* key, const CurrentLanguage& currentLanguage,
                        ErrorList& errors);

}  // namespace KelmoLibs::Localize
