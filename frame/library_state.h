// The process-wide objects: one state for the whole process, built at load, destroyed at unload,
// without a lock. (On Linux the classes of characters keep a locale besides.) Only exports.cpp works
// on them, and the constructors of Double on the catalogue of units, which phyval/unit_catalogue.h
// declares; everything else is handed what it needs.
#pragma once

#include <string>

#include "dictionary/dictionary.h"
#include "frame/error_list.h"
#include "phyval/unit_catalogue.h"
#include "unittables/language_table.h"

namespace KelmoLibs::Localize {

extern LocalizedUnitTable localizedUnitTable;
extern ErrorList loadMessages;  // of loading that table; no export reads them
extern CurrentLanguage currentLanguage;
extern DictionaryTable dictionaries;
extern ErrorList errorList;

}  // namespace KelmoLibs::Localize
