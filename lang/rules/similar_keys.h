// Keys with typing mistakes: finds pairs of keys that differ by one or two letters.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace KelmoLibs::Lang {

/// A missing key and the surplus key that was probably meant to be it.
struct SimilarKeys {
  std::size_t missing;  // indices of the two lists
  std::size_t surplus;
};

/// The most similar pairs, each key in at most one. The time grows with the lengths of the lists and
/// not with their product; in very long lists some pairs are not found. Keys that differ by a number
/// ("item.1", "item.2") or in a very short part ("axis.x", "axis.y") are not similar.
std::vector<SimilarKeys> FindSimilarKeys(const std::vector<std::string_view>& missing,
                                         const std::vector<std::string_view>& surplus);

}  // namespace KelmoLibs::Lang
