// Texts of the system's calls on Windows, which are UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// Bytes that are not UTF-8 become U+FFFD.
std::wstring WideOf(std::string_view utf8);

/// Surrogates without their other half become U+FFFD.
std::string Utf8Of(std::wstring_view wide);

}  // namespace KelmoLibs::Localize
