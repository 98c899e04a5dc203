#include "platform/user_number_format.h"

#include <windows.h>

#include <array>
#include <utility>

#include "cldr/number_format.h"
#include "platform/windows/wide_text.h"

namespace KelmoLibs::Localize {
namespace {

// The setting, or an empty text.
std::wstring Setting(LCTYPE type) {
  constexpr int kCapacity = 16;  // Windows allows at most ten characters in these settings
  std::array<wchar_t, kCapacity> text{};
  const int size = ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text.data(), kCapacity);
  return size > 0 ? std::wstring(text.data()) : std::wstring();
}

}  // namespace

NumberFormatOrLanguage NumberFormatOfUser() {
  UserNumberFormat format;
  const auto set = [](std::string& mark, LCTYPE type) {
    std::string found = Utf8Of(Setting(type));
    if (!found.empty() && found.size() <= Cldr::kLongestMark) {
      mark = std::move(found);
    }
  };
  set(format.decimalMark, LOCALE_SDECIMAL);
  set(format.groupMark, LOCALE_STHOUSAND);
  set(format.minusSign, LOCALE_SNEGATIVESIGN);
  if (!format.groupMark.empty()) {
    format.groups = GroupsOfNumbers(Setting(LOCALE_SGROUPING));
  }
  return format;
}

}  // namespace KelmoLibs::Localize
