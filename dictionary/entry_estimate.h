// How many entries a file will give, so that a table grows once for them.
#pragma once

#include <algorithm>
#include <cstddef>

namespace KelmoLibs::Localize {

/// Estimates how many entries the rest of a source has: `bytesRead` bytes had `entries`. A little
/// more, so that the table does not grow again for the last entries.
inline std::size_t ExtrapolateCount(std::size_t entries, std::size_t bytesRead,
                                    std::size_t sourceBytes) noexcept {
  constexpr double kMargin = 1.0625;
  constexpr double kMax = 1e18;  // ByteSource::SizeHint may return any number
  const auto rest = static_cast<double>(sourceBytes - std::min(bytesRead, sourceBytes));
  const double estimate = rest / static_cast<double>(bytesRead) * static_cast<double>(entries);
  return static_cast<std::size_t>(std::min(estimate * kMargin, kMax));
}

}  // namespace KelmoLibs::Localize
