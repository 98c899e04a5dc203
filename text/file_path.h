// The paths that the library opens, and shows in its messages.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// `folder`, a backslash and `fileName`. Both parts stay unchanged: L"a\\" and L"b" give L"a\\\\b";
/// L"" and L"b" give L"\\b". The result, and so a message that shows it, is the same on every
/// system.
std::wstring JoinPath(std::wstring_view folder, std::wstring_view fileName);

}  // namespace KelmoLibs::Localize
