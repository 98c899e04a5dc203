#include "platform/user_language.h"

#include <windows.h>

#include <array>

#include "platform/windows/wide_text.h"

namespace KelmoLibs::Lang {

std::string UserLanguage() {
  constexpr int kLongestName = 9;  // with the zero at its end
  std::array<wchar_t, kLongestName> name = {};
  ::GetLocaleInfoW(MAKELCID(::GetUserDefaultUILanguage(), SORT_DEFAULT), LOCALE_SISO639LANGNAME,
                   name.data(), kLongestName);
  return Localize::Utf8Of(name.data());
}

}  // namespace KelmoLibs::Lang
