// Replaces the library's header. The six process-wide objects have types that record construction
// and destruction: so state_order_test.cpp sees the order of library_state.cpp.
#pragma once

void Record(char sign, char object) noexcept;

namespace KelmoLibs::Localize {

template <char kObject>
struct Recorded {
  Recorded() noexcept { Record('+', kObject); }
  Recorded(const Recorded&) = delete;
  Recorded& operator=(const Recorded&) = delete;
  ~Recorded() { Record('-', kObject); }
};

using LocalizedUnitTable = Recorded<'u'>;
using DictionaryTable = Recorded<'d'>;

// Both lists have this type; state_order_test.cpp distinguishes them by their addresses.
struct ErrorList {
  ErrorList() noexcept;
  ErrorList(const ErrorList&) = delete;
  ErrorList& operator=(const ErrorList&) = delete;
  ~ErrorList();
};

using CurrentLanguage = Recorded<'c'>;

namespace Phyval {
using UnitCatalogue = Recorded<'k'>;
extern UnitCatalogue unitCatalogue;
inline UnitCatalogue BuiltInUnits() noexcept { return {}; }
}  // namespace Phyval

extern LocalizedUnitTable localizedUnitTable;
extern ErrorList loadMessages;
extern CurrentLanguage currentLanguage;
extern DictionaryTable dictionaries;
extern ErrorList errorList;

}  // namespace KelmoLibs::Localize
