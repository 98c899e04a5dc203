// Memory that a switch to the user's locale leaks on this system.
#pragma once

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "tests/support/test_platform.h"

/// Bytes that the system's setlocale leaks each time a program switches to the user's locale and
/// back, as to_string() does. Wine 10 leaks the name of a locale: 12.
inline std::size_t BytesLeakedByUserLocale() {
  constexpr int kTimes = 100;
  std::optional<Footprint> before;
  for (int time = 0; time <= kTimes; ++time) {
    if (time == 1) {  // after the allocations that are made once
      before = MeasureFootprint();
    }
    std::setlocale(LC_ALL, "");
    std::setlocale(LC_ALL, "C");
  }
  const std::optional<Footprint> after = MeasureFootprint();
  if (!before || !after) {
    return 0;
  }
  const auto leaked = static_cast<std::int64_t>(after->heapBytes - before->heapBytes);
  return static_cast<std::size_t>(std::max<std::int64_t>(leaked / kTimes, 0));
}
