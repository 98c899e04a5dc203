// The bytes of one dictionary file into the table. Opens nothing and reports nothing: problems go
// to the caller.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "dictionary/dictionary.h"
#include "text/byte_source.h"

namespace KelmoLibs::Localize {

/// Called with each key that its dictionary has already.
using DuplicateKeyHandler = std::function<void(std::wstring_view key)>;

/// Reads the header and then every entry of `source`. The id becomes the current one before
/// its dictionary is made, and a dictionary that exists is added to; the first text of a key stays. A
/// source without a single line changes nothing. What fails (memory, the handler) passes through:
/// all that was done before it stays.
void ReadDictionary(ByteSource& source, CurrentLanguage& currentLanguage,
                    DictionaryTable& dictionaries, const DuplicateKeyHandler& onDuplicateKey);

}  // namespace KelmoLibs::Localize
