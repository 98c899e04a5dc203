// Replaces operator new of the test program: counts and measures the allocations, and lets chosen
// ones fail.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

namespace allocation_probe {

/// Calls of operator new since the start of the program.
std::size_t Count() noexcept;

/// Bytes allocated now, and their maximum since the last ResetPeak.
std::size_t LiveBytes() noexcept;
std::size_t PeakBytes() noexcept;
void ResetPeak() noexcept;

enum class Failing { kOnce, kFromThenOn };

/// During its life the n-th allocation (1 is the next) throws std::bad_alloc: only this one, or all
/// later ones too.
class FailAllocation {
 public:
  explicit FailAllocation(std::size_t n, Failing failing) noexcept;
  FailAllocation(const FailAllocation&) = delete;
  FailAllocation& operator=(const FailAllocation&) = delete;
  ~FailAllocation();

  /// Whether an allocation has failed. False if the code under test needs fewer than n.
  bool Happened() const noexcept;
};

/// During its life an allocation that would exceed LiveBytes() at its start by more than `more`
/// throws std::bad_alloc. Freed bytes can be allocated again.
class LimitBytes {
 public:
  explicit LimitBytes(std::size_t more) noexcept;
  LimitBytes(const LimitBytes&) = delete;
  LimitBytes& operator=(const LimitBytes&) = delete;
  ~LimitBytes();
};

/// Fails the test if memory that was allocated during its life is not freed at its end.
class LeakCheck {
 public:
  LeakCheck() = default;
  LeakCheck(const LeakCheck&) = delete;
  LeakCheck& operator=(const LeakCheck&) = delete;
  ~LeakCheck() { EXPECT_EQ(LiveBytes(), before_) << "leaked"; }

 private:
  std::size_t before_ = LiveBytes();
};

enum class Outcome {
  kNoFailure,  // fewer than n allocations were needed
  kReturned,   // an allocation failed, and the call handled it
  kThrew,      // an allocation failed, and the call passed std::bad_alloc on
};

/// Makes `call` while its n-th allocation fails.
template <class Call>
Outcome CallWithFailingAllocation(std::size_t n, Call call, Failing failing = Failing::kOnce) {
  const FailAllocation failure(n, failing);
  try {
    call();
    return failure.Happened() ? Outcome::kReturned : Outcome::kNoFailure;
  } catch (const std::bad_alloc&) {
    if (!failure.Happened()) {
      throw;
    }
    return Outcome::kThrew;
  }
}

}  // namespace allocation_probe
