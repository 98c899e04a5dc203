// How many typing mistakes lie between two words.
#pragma once

#include <cstddef>
#include <string_view>

namespace KelmoLibs::Lang {

/// Number of letters to insert, delete, replace or swap with the next one to make `b` of `a`; any
/// number greater than `limit` if it is greater than that. The cost is the product of a length and
/// `limit`.
std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t limit);

/// Whether EditDistance(a, b) is at most 1, in linear time.
bool IsOneMistake(std::string_view a, std::string_view b) noexcept;

}  // namespace KelmoLibs::Lang
