// A wide path in Windows form as the bytes that a POSIX system opens.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// `path` with every backslash as a slash, in UTF-8 whatever the locale. Nothing where a wchar_t
/// (32 bits) is no character: a surrogate or a value beyond U+10FFFF.
std::optional<std::string> PosixPath(std::wstring_view path);

}  // namespace KelmoLibs::Localize
