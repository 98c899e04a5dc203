// The paths that the library opens and quotes in its messages.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// `folder` and `fileName` with one backslash between them, both unchanged: L"a\\" and L"b" give
/// L"a\\\\b", and L"" and L"b" give L"\\b". The same on every system, so that messages are too.
std::wstring JoinPath(std::wstring_view folder, std::wstring_view fileName);

}  // namespace KelmoLibs::Localize
