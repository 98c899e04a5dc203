// The paths that the library opens and quotes in its messages.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// `folder`, one backslash, `fileName`, each as it stands: a folder that ends in a separator gives
/// two in a row, an empty one a path that begins with the backslash. The same on every system, so
/// that messages are too.
std::wstring JoinPath(std::wstring_view folder, std::wstring_view fileName);

}  // namespace KelmoLibs::Localize
