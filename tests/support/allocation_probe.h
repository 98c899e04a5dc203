// Watches every operator new of the test program: counts, measures, and makes chosen ones fail.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

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
  explicit FailAllocation(std::size_t n, Failing failing) noexcept;
  FailAllocation(const FailAllocation&) = delete;
  FailAllocation& operator=(const FailAllocation&) = delete;
  ~FailAllocation();

  /// Whether an allocation has failed: false once the code under test needs fewer than n.
  bool Happened() const noexcept;
};

/// While it lives, an allocation that would make more bytes be held than now and `more` throws
/// std::bad_alloc. What is given back counts for nothing, and can be had again.
class LimitBytes {
 public:
  explicit LimitBytes(std::size_t more) noexcept;
  LimitBytes(const LimitBytes&) = delete;
  LimitBytes& operator=(const LimitBytes&) = delete;
  ~LimitBytes();
};

/// At its end everything must be given back that was taken during its life.
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
  kReturned,   // one failed, and the call dealt with it
  kThrew,      // one failed, and the call passed std::bad_alloc on
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
