// The work of LoadDictionary: reads a file into a dictionary and its problems into the error list.
#pragma once

#include <cstdint>
#include <string>

#include "dictionary/dictionary.h"
#include "frame/error_list.h"

namespace KelmoLibs::Localize {

/// Loads the dictionary file at `path`. Returns
///   0 or more if the file was read: the number of all messages in `errors`;
///   -2 if the file cannot be opened: a message is appended, nothing else changes;
///   -1 if the loading failed: a message is appended, and the entries that were read before stay.
/// Throws only if that message cannot be appended.
std::int32_t LoadDictionaryFile(const std::wstring& path, CurrentLanguage& currentLanguage,
                                DictionaryTable& dictionaries, ErrorList& errors);

}  // namespace KelmoLibs::Localize
