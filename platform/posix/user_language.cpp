#include "platform/user_language.h"

#include <cstdlib>
#include <string_view>

namespace KelmoLibs::Lang {

std::string UserLanguage() {
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value != nullptr && *value != '\0') {
      const std::string_view locale(value);  // "de_DE.UTF-8", "ru", "sr@latin", "C.UTF-8"
      const std::string language(locale.substr(0, locale.find_first_of("_.@")));
      return language == "C" || language == "POSIX" ? std::string() : language;
    }
  }
  return {};
}

}  // namespace KelmoLibs::Lang
