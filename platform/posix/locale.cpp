#include "platform/locale.h"

#include <clocale>
#include <iomanip>
#include <locale>
#include <sstream>

#include "platform/user_locale.h"

namespace KelmoLibs::Localize {

std::wstring FormatUnderUserLocale(double number, int decimals) {
  return FormatUnderUserLocale(std::setlocale, number, decimals);
}

std::optional<std::wstring> FormatUnderGlobalLocale(double number, int decimals) {
  if (std::locale() == std::locale::classic()) {
    return std::nullopt;
  }
  std::wostringstream stream;
  stream.exceptions(
      std::ios::badbit);  // otherwise a failed allocation would only truncate the text
  stream << std::fixed << std::setprecision(decimals) << number;
  return stream.str();
}

}  // namespace KelmoLibs::Localize
