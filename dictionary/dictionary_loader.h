// The work of LoadDictionary: one file into the table, its problems into the error list.
#pragma once

#include <cstdint>
#include <string>

#include "dictionary/dictionary.h"
#include "frame/error_list.h"

namespace KelmoLibs::Localize {

/// Loads the dictionary file at `path`. Returns
///   0 or more once the file is read: how many messages `errors` holds then;
///   -2 when it cannot be opened: listed, nothing else has changed;
///   -1 when a failure cut the loading short: listed, what was read before stays.
/// Only a failure to list that very message leaves as an exception.
std::int32_t LoadDictionaryFile(const std::wstring& path, CurrentLanguage& currentLanguage,
                                DictionaryTable& dictionaries, ErrorList& errors);

}  // namespace KelmoLibs::Localize
