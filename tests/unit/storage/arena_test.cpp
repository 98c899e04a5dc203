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

constexpr std::size_t kSmallestBlock = 4096;
constexpr std::size_t kLargestBlock = std::size_t{1024} * 1024;

constexpr std::size_t Rounded(std::size_t bytes) { return (bytes + 7) / 8 * 8; }

// All bytes that a test has taken, each piece with a pattern of its own.
class Pieces {
 public:
  void Take(Arena& store, std::size_t bytes) {
    std::byte* const piece = store.Allocate(bytes);
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(piece) % Arena::kAlignment, 0U);
    std::memset(piece, PatternOf(pieces_.size()), bytes);
    pieces_.emplace_back(piece, bytes);
    sum_ += Rounded(bytes);
  }

  void ExpectUntouched() const {
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      const auto& [piece, bytes] = pieces_[i];
      ASSERT_TRUE(std::all_of(piece, piece + bytes,
                              [i](std::byte byte) { return byte == std::byte(PatternOf(i)); }))
          << "piece " << i << " of " << bytes;
    }
  }

  std::size_t Sum() const { return sum_; }

 private:
  static unsigned char PatternOf(std::size_t i) { return static_cast<unsigned char>(i * 37 + 1); }

  std::vector<std::pair<const std::byte*, std::size_t>> pieces_;
  std::size_t sum_ = 0;
};

TEST(Arena, GivesAlignedPiecesThatStayAsTheyAre) {
  RandomNumbers random(randomSeed);
  const LeakCheck everythingIsGivenBack;
  Arena store(nullptr);
  Pieces pieces;
  for (int i = 0; i < 20'000; ++i) {
    const int below = random.Below(1000) == 0 ? 100'000 : random.Below(20) == 0 ? 5000 : 100;
    pieces.Take(store, static_cast<std::size_t>(random.Below(below)));
  }
  for (const std::size_t bytes : {kLargestBlock, kLargestBlock + 1, 3 * kLargestBlock}) {
    pieces.Take(store, bytes);
    pieces.Take(store, 1);
  }
  pieces.ExpectUntouched();
}

TEST(Arena, TakesMemoryOnlyForBlocks) {
  Arena store(nullptr);
  store.Allocate(8);
  const std::size_t before = allocation_probe::Count();
  for (std::size_t taken = 8; taken < kSmallestBlock; taken += 8) {
    store.Allocate(8);
  }
  EXPECT_EQ(allocation_probe::Count(), before);
  store.Allocate(8);
  EXPECT_GT(allocation_probe::Count(), before);
}

// `held` is in blocks, and a little to know them by.
void ExpectLittleHeldInVain(std::size_t held, std::size_t taken) {
  constexpr std::size_t kToKnowBlocksBy = 1024;
  ASSERT_LE(held, taken + taken / 8 + kSmallestBlock + kToKnowBlocksBy)
      << taken << " bytes were taken";
}

TEST(Arena, HoldsAtMostAnEighthInVain) {
  RandomNumbers random(randomSeed);
  const struct {
    const char* name;
    std::size_t most;
    std::function<std::size_t()> next;
  } rows[] = {
      {"single bytes", 1'000'000, [] { return std::size_t{1}; }},
      {"entries of one size", 4'000'000, [] { return std::size_t{104}; }},
      {"entries of any size", 4'000'000,
       [&] { return static_cast<std::size_t>(random.Below(200)); }},
      {"large ones alone", 20'000'000, [] { return 2 * kLargestBlock; }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::size_t before = allocation_probe::LiveBytes();
    Arena store(nullptr);
    std::size_t taken = 0;
    while (taken < row.most) {
      const std::size_t bytes = row.next();
      store.Allocate(bytes);
      taken += Rounded(bytes);
      ASSERT_NO_FATAL_FAILURE(
          ExpectLittleHeldInVain(allocation_probe::LiveBytes() - before, taken));
    }
  }
}

TEST(Arena, HoldsAtMostAnEighthInVainWhereLargeOnesStandBetweenSmallOnes) {
  for (const std::size_t large : {kSmallestBlock, 10 * kSmallestBlock, kLargestBlock}) {
    SCOPED_TRACE(large);
    const std::size_t before = allocation_probe::LiveBytes();
    Arena store(nullptr);
    std::size_t taken = 0;
    for (int i = 0; i < 20; ++i) {
      for (const std::size_t bytes : {std::size_t{8}, large}) {
        store.Allocate(bytes);
        taken += bytes;
      }
    }
    ExpectLittleHeldInVain(allocation_probe::LiveBytes() - before, taken);
  }
}

TEST(Arena, GivesAgainWhatItWasGivenBack) {
  for (const std::size_t bytes : {std::size_t{8}, std::size_t{13}, std::size_t{90'000}}) {
    SCOPED_TRACE(bytes);
    Arena store(nullptr);
    Pieces pieces;
    pieces.Take(store, 100);
    store.FreeLast(store.Allocate(bytes), bytes);
    pieces.Take(store, 100);
    const std::size_t live = allocation_probe::LiveBytes();
    for (int i = 0; i < 100; ++i) {
      store.FreeLast(store.Allocate(bytes), bytes);
    }
    EXPECT_LE(allocation_probe::LiveBytes(), live + 4096);
    pieces.ExpectUntouched();
  }
}

TEST(Arena, GoesOnWhereItWasOnceABlockOfItsOwnIsGivenBack) {
  Arena store(nullptr);
  std::byte* const first = store.Allocate(Arena::kAlignment);
  std::byte* const alone = store.Allocate(5000);  // does not fit, and much is left beside it
  store.FreeLast(alone, 5000);
  EXPECT_EQ(store.Allocate(Arena::kAlignment), first + Arena::kAlignment);
}

TEST(Arena, IsAsBeforeWhereMemoryFails) {
  for (const std::size_t bytes : {std::size_t{8}, 2 * kLargestBlock}) {
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message() << "allocation " << n << ", for " << bytes);
      const LeakCheck everythingIsGivenBack;
      Arena store(nullptr);
      Pieces pieces;
      for (const std::size_t size : {4000U, 4000U, 90U, 4000U, 4090U}) {
        pieces.Take(store, size);
      }
      const Outcome outcome = CallWithFailingAllocation(n, [&] { store.Allocate(bytes); });
      ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
      if (outcome == Outcome::kNoFailure) {
        EXPECT_GE(n, 2U) << "no allocation was tried";
        break;
      }
      pieces.Take(store, bytes);
      pieces.Take(store, 100);
      pieces.ExpectUntouched();
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
