#include "platform/user_number_format.h"

#include <langinfo.h>
#include <locale.h>  // NOLINT(modernize-deprecated-headers): <clocale> need not have newlocale

#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "platform/posix/locale_variables.h"
#include "text/locale_name.h"
#include "text/utf8.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Localize {
namespace {

using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&::freelocale)>;

// A mark as a wide character: the text may be in another encoding than UTF-8. glibc answers such a
// question with the character in the place of the pointer to a text.
std::string Mark(nl_item item, locale_t locale) {
  const char* const answer = ::nl_langinfo_l(item, locale);
  wchar_t character = 0;
  std::memcpy(&character, &answer, sizeof character);
  std::string mark;
  if (character != 0 && IsScalarValue(static_cast<char32_t>(character))) {
    AppendUtf8(static_cast<char32_t>(character), mark);
  }
  return mark;
}

}  // namespace

NumberFormatOrLanguage NumberFormatOfUser() {
  const Locale locale(::newlocale(LC_NUMERIC_MASK, "", nullptr), &::freelocale);
  if (locale == nullptr) {
    return LanguageOfLocale(LocaleOfUser("LC_NUMERIC"));
  }
  UserNumberFormat format;
  std::string decimalMark = Mark(_NL_NUMERIC_DECIMAL_POINT_WC, locale.get());
  if (decimalMark.empty()) {  // a damaged locale
    return format;
  }
  format.decimalMark = std::move(decimalMark);
  format.groupMark = Mark(_NL_NUMERIC_THOUSANDS_SEP_WC, locale.get());
  if (!format.groupMark.empty()) {
    format.groups = GroupsOfBytes(::nl_langinfo_l(GROUPING, locale.get()));
  }
  return format;
}

}  // namespace KelmoLibs::Localize
