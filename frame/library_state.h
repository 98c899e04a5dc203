// The process-wide objects: constructed when the library is loaded, destroyed when it is unloaded,
// without a lock. Only exports.cpp uses them, and the constructors of Double use the catalogue of
// units, which phyval/unit_catalogue.h declares. All other code gets its objects as arguments. (On
// Linux platform/posix/characters.cpp has one more.)
#pragma once

#include <string>

#include "dictionary/dictionary.h"
#include "frame/error_list.h"
#include "phyval/unit_catalogue.h"
#include "unittables/language_table.h"

namespace KelmoLibs::Localize {

extern LocalizedUnitTable localizedUnitTable;
extern ErrorList loadMessages;  // from loading that table; no export returns them
extern CurrentLanguage currentLanguage;
extern DictionaryTable dictionaries;
extern ErrorList errorList;

}  // namespace KelmoLibs::Localize
