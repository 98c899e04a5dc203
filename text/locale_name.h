// The names that POSIX systems give to locales.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// The id of a locale's language: "de-AT" for "de_AT.UTF-8@euro", "sr-Latn-RS" for "sr_RS@latin".
/// Empty if it names no language. Throws only std::bad_alloc.
std::string LanguageOfLocale(std::string_view locale);

}  // namespace KelmoLibs::Localize
