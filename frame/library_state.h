// The process-wide objects: one state for the whole process, built at load, destroyed at unload,
// without a lock. Only exports.cpp works on them; everything else is handed what it needs. The
// catalogue of units is declared in phyval/unit_catalogue.h.
#pragma once

#include <string>

#include "dictionary/dictionary.h"
#include "frame/error_list.h"
#include "phyval/unit_catalogue.h"

namespace KelmoLibs::Localize {

extern std::wstring currentLanguage;  // id of the current dictionary
extern DictionaryTable dictionaries;
extern ErrorList errorList;

}  // namespace KelmoLibs::Localize
