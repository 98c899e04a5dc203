#include "frame/library_state.h"

namespace KelmoLibs::Localize {

// One file defines all six objects, because C++ fixes the order within one file: constructed from
// the first to the last at load, destroyed from the last to the first at unload. Do not reorder
// these lines or move them to other files (tests/unit/frame/state_order). On Linux
// platform/posix/characters.cpp has a seventh object, a locale. Its place in the order does not
// matter: no constructor or destructor of the six uses it.
//
// NOLINTNEXTLINE(cert-err58-cpp): without memory for nine rows, loading the library ends the process
Phyval::UnitCatalogue Phyval::unitCatalogue = Phyval::BuiltInUnits();
LocalizedUnitTable localizedUnitTable;
ErrorList loadMessages;
CurrentLanguage currentLanguage;
DictionaryTable dictionaries;
ErrorList errorList;

}  // namespace KelmoLibs::Localize
