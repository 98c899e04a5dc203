// Wide texts of the library as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// `wide` as UTF-8. A surrogate pair becomes its character. Precondition: no surrogate is alone.
std::string Utf8FromWide(std::wstring_view wide);

}  // namespace KelmoLibs::Lang
