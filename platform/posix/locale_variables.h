// The variables of the environment in which users of POSIX systems name their locale.
#pragma once

#include <cstdlib>
#include <string_view>

namespace KelmoLibs::Localize {

/// The value of a variable; empty if it is not set.
inline std::string_view VariableOfEnvironment(const char* name) noexcept {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

/// The locale for `category`, such as "LC_NUMERIC": LC_ALL goes before it, and LANG behind.
inline std::string_view LocaleOfUser(const char* category) noexcept {
  std::string_view locale;
  for (const char* const name : {"LC_ALL", category, "LANG"}) {
    locale = locale.empty() ? VariableOfEnvironment(name) : locale;
  }
  return locale;
}

}  // namespace KelmoLibs::Localize
