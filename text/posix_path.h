// Converts a wide path in Windows form to the bytes that a POSIX system opens.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// `path` as UTF-8, in every locale, with a slash for each backslash. Nothing if a wchar_t (32
/// bits) is not a character: a surrogate or a value beyond U+10FFFF.
std::optional<std::string> PosixPath(std::wstring_view path);

}  // namespace KelmoLibs::Localize
