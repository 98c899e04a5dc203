// Reads the bytes of one dictionary file into a dictionary. Opens no file and forms no message.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "dictionary/dictionary.h"
#include "text/byte_source.h"

namespace KelmoLibs::Localize {

/// Called with each key that the dictionary already has.
using DuplicateKeyHandler = std::function<void(std::wstring_view key)>;

/// Reads the header and then all entries of `source`. The id of the header becomes the current one
/// before its dictionary is created. If the dictionary exists, the entries are added to it; the
/// first text of a key stays. A source without a line changes nothing. Exceptions (std::bad_alloc,
/// and those of the source and the handler) pass through; everything that was done before stays.
void ReadDictionary(ByteSource& source, CurrentLanguage& currentLanguage,
                    DictionaryTable& dictionaries, const DuplicateKeyHandler& onDuplicateKey);

}  // namespace KelmoLibs::Localize
