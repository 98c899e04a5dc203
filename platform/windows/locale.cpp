#include "platform/locale.h"

#include <wchar.h>

#include "platform/user_locale.h"

namespace KelmoLibs::Localize {

// By wide names: a narrow name with a letter beyond ASCII, such as "Turkish_T\u00FCrkiye.utf8",
// would be read back in the code page of the user's locale.
std::wstring FormatUnderUserLocale(double number, int decimals) {
  return FormatUnderUserLocale(::_wsetlocale, number, decimals);
}

// Does not even read the global locale: for its locales the static runtime of MinGW-w64 would
// allocate a slot of thread-local storage and never free it, and its streams switch the runtime's
// locale while they print.
std::optional<std::wstring> FormatUnderGlobalLocale(double /*number*/, int /*decimals*/) {
  return std::nullopt;
}

}  // namespace KelmoLibs::Localize
