// Paths as addresses.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// `path`, UTF-8 with slashes, as a part of an address: every byte that has a meaning there is
/// written as %XX.
std::string PercentEncoded(std::string_view path);

}  // namespace KelmoLibs::Lang
