#include "storage/arena.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;

constexpr std::size_t kMinBlock = 4096;
constexpr std::size_t kLargeBytes = std::size_t{1024} * 1024;

constexpr std::size_t RoundUp(std::size_t bytes) { return (bytes + 7) / 8 * 8; }

// The allocations of a test. Each is filled with its own pattern.
class Allocations {
 public:
  void Add(Arena& arena, std::size_t bytes) {
    std::byte* const memory = arena.Allocate(bytes);
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(memory) % Arena::kAlignment, 0U);
    std::memset(memory, PatternOf(allocations_.size()), bytes);
    allocations_.emplace_back(memory, bytes);
  }

  void ExpectUntouched() const {
    for (std::size_t i = 0; i < allocations_.size(); ++i) {
      const auto& [memory, bytes] = allocations_[i];
      ASSERT_TRUE(std::all_of(memory, memory + bytes,
                              [i](std::byte byte) { return byte == std::byte(PatternOf(i)); }))
          << "allocation " << i << " of " << bytes << " bytes";
    }
  }

 private:
  static unsigned char PatternOf(std::size_t i) { return static_cast<unsigned char>(i * 37 + 1); }

  std::vector<std::pair<const std::byte*, std::size_t>> allocations_;
};

TEST(Arena, AllocationsAreAlignedAndKeepTheirBytes) {
  RandomNumbers random(randomSeed);
  const LeakCheck leakCheck;
  Arena arena(nullptr);
  Allocations allocations;
  for (int i = 0; i < 20'000; ++i) {
    const int below = random.Below(1000) == 0 ? 100'000 : random.Below(20) == 0 ? 5000 : 100;
    allocations.Add(arena, static_cast<std::size_t>(random.Below(below)));
  }
  for (const std::size_t bytes : {kLargeBytes, kLargeBytes + 1, 3 * kLargeBytes}) {
    allocations.Add(arena, bytes);
    allocations.Add(arena, 1);
  }
  allocations.ExpectUntouched();
}

TEST(Arena, AllocatesMemoryOnlyForBlocks) {
  Arena arena(nullptr);
  arena.Allocate(8);
  const std::size_t before = allocation_probe::Count();
  for (std::size_t bytes = 8; bytes < kMinBlock; bytes += 8) {
    arena.Allocate(8);
  }
  EXPECT_EQ(allocation_probe::Count(), before);
  arena.Allocate(8);
  EXPECT_GT(allocation_probe::Count(), before);
}

// `liveBytes` are the blocks and the list of their addresses.
void ExpectLittleWaste(std::size_t liveBytes, std::size_t allocated) {
  constexpr std::size_t kMaxListBytes = 1024;
  ASSERT_LE(liveBytes, allocated + allocated / 8 + kMinBlock + kMaxListBytes)
      << allocated << " bytes were allocated";
}

TEST(Arena, WastesAtMostAnEighth) {
  RandomNumbers random(randomSeed);
  const struct {
    const char* name;
    std::size_t maxBytes;
    std::function<std::size_t()> next;
  } rows[] = {
      {"single bytes", 1'000'000, [] { return std::size_t{1}; }},
      {"entries of one size", 4'000'000, [] { return std::size_t{104}; }},
      {"entries of any size", 4'000'000,
       [&] { return static_cast<std::size_t>(random.Below(200)); }},
      {"only large allocations", 20'000'000, [] { return 2 * kLargeBytes; }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::size_t before = allocation_probe::LiveBytes();
    Arena arena(nullptr);
    std::size_t allocated = 0;
    while (allocated < row.maxBytes) {
      const std::size_t bytes = row.next();
      arena.Allocate(bytes);
      allocated += RoundUp(bytes);
      ASSERT_NO_FATAL_FAILURE(ExpectLittleWaste(allocation_probe::LiveBytes() - before, allocated));
    }
  }
}

TEST(Arena, WastesAtMostAnEighthIfLargeAllocationsFollowSmallOnes) {
  for (const std::size_t large : {kMinBlock, 10 * kMinBlock, kLargeBytes}) {
    SCOPED_TRACE(large);
    const std::size_t before = allocation_probe::LiveBytes();
    Arena arena(nullptr);
    std::size_t allocated = 0;
    for (int i = 0; i < 20; ++i) {
      for (const std::size_t bytes : {std::size_t{8}, large}) {
        arena.Allocate(bytes);
        allocated += bytes;
      }
    }
    ExpectLittleWaste(allocation_probe::LiveBytes() - before, allocated);
  }
}

TEST(Arena, ReusesFreedMemory) {
  for (const std::size_t bytes : {std::size_t{8}, std::size_t{13}, std::size_t{90'000}}) {
    SCOPED_TRACE(bytes);
    Arena arena(nullptr);
    Allocations allocations;
    allocations.Add(arena, 100);
    arena.FreeLast(arena.Allocate(bytes), bytes);
    allocations.Add(arena, 100);
    const std::size_t live = allocation_probe::LiveBytes();
    for (int i = 0; i < 100; ++i) {
      arena.FreeLast(arena.Allocate(bytes), bytes);
    }
    EXPECT_LE(allocation_probe::LiveBytes(), live + 4096);
    allocations.ExpectUntouched();
  }
}

TEST(Arena, FreeingASeparateBlockKeepsTheCurrentBlock) {
  Arena arena(nullptr);
  std::byte* const first = arena.Allocate(Arena::kAlignment);
  std::byte* const separate = arena.Allocate(5000);  // too large for the rest of the current block
  arena.FreeLast(separate, 5000);
  EXPECT_EQ(arena.Allocate(Arena::kAlignment), first + Arena::kAlignment);
}

TEST(Arena, AFailedAllocationChangesNothing) {
  for (const std::size_t bytes : {std::size_t{8}, 2 * kLargeBytes}) {
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message() << "allocation " << n << ", for " << bytes);
      const LeakCheck leakCheck;
      Arena arena(nullptr);
      Allocations allocations;
      for (const std::size_t size : {4000U, 4000U, 90U, 4000U, 4090U}) {
        allocations.Add(arena, size);
      }
      const Outcome outcome = CallWithFailingAllocation(n, [&] { arena.Allocate(bytes); });
      ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
      if (outcome == Outcome::kNoFailure) {
        EXPECT_GE(n, 2U) << "nothing was allocated";
        break;
      }
      allocations.Add(arena, bytes);
      allocations.Add(arena, 100);
      allocations.ExpectUntouched();
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
