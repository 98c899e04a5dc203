// Watches every operator new of the test program: counts, measures, and makes chosen ones fail.
#pragma once

#include <cstddef>

namespace allocation_probe {

/// Calls of operator new since the program began.
std::size_t Count() noexcept;

/// Bytes held at this moment, and the most held since the last ResetPeak.
std::size_t LiveBytes() noexcept;
std::size_t PeakBytes() noexcept;
void ResetPeak() noexcept;

enum class Failing { kOnce, kFromThenOn };

/// While it lives, the n-th allocation from now (1 is the next) throws std::bad_alloc: that one
/// alone, or it and all that follow.
class FailAllocation {
 public:
  explicit FailAllocation(std::size_t n, Failing failing = Failing::kOnce) noexcept;
  FailAllocation(const FailAllocation&) = delete;
  FailAllocation& operator=(const FailAllocation&) = delete;
  ~FailAllocation();

  /// Whether an allocation has failed: false once the code under test needs fewer than n.
  bool Happened() const noexcept;
};

}  // namespace allocation_probe
