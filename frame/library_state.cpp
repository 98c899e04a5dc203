#include "frame/library_state.h"

namespace KelmoLibs::Localize {

// One file defines all six, because within one file the language fixes the order: built from the
// first to the last at load, destroyed from the last to the first at unload. Both rest on the order
// of these lines: do not reorder or spread them. On Linux there is a seventh object, a locale for the
// classes of characters (platform/posix/characters.cpp). It holds nothing of a host's, and none
// of the six needs it to be built or destroyed, so that its place in the order does not matter.
//
// NOLINTNEXTLINE(cert-err58-cpp): a host without memory for nine rows cannot be loaded into
Phyval::UnitCatalogue Phyval::unitCatalogue = Phyval::BuiltInUnits();
LocalizedUnitTable localizedUnitTable;
ErrorList loadMessages;
CurrentLanguage currentLanguage;
DictionaryTable dictionaries;
ErrorList errorList;

}  // namespace KelmoLibs::Localize
