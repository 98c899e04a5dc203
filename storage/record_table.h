// Records that are found by their keys: the one store of the library. Dictionaries and lists of
// messages are made of it; docs/design.md draws it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <utility>

#include "storage/arena.h"
#include "storage/inlining.h"
#include "storage/word.h"

namespace KelmoLibs::Localize {

/// Records of any size, which stay where they are until all of them go. The table knows of each its
/// address and seven bits of its hash, side by side with those of six others: one cache line decides most
/// lookups.
///
/// A record stands in its home bucket of seven, or in one of the next: a lookup probes at most kProbedBuckets
/// buckets. A record that finds no place there stands in the overflow, a sorted set, so that a lookup takes
/// O(log n) steps even under hash flooding. With other hashes fewer than one record in a thousand does.
///
/// A Record has Hash(), and Compare(record, record) is a total order of records, 0 for equal ones only. It is
/// trivially destructible, and aligned to BlockStore::kAlignment at most. A Query has Hash(); Is(record), whether
/// it asks for that record; and Ordered(), a value for which Compare(record, value) is the same order. Equal records
/// and queries have equal hashes. None of these functions throws.
template <class Record>
class RecordTable {
 public:
  static constexpr std::size_t kBucketRecords = 7;
  static constexpr std::size_t kProbedBuckets = 8;

  /// The record that is `wanted`, or null. Takes no memory.
  template <class Query>
  const Record* Find(const Query& wanted) const noexcept {
    if (homeBuckets_ == 0) {
      return nullptr;
    }
    const Bucket* bucket = HomeOf(wanted.Hash());
    for (std::size_t probed = 0; probed < kProbedBuckets; ++probed, ++bucket) {
      for (auto slots = bucket->SlotsOf(wanted.Hash()); slots != 0; slots &= slots - 1) {
        if (wanted.Is(*bucket->At(slots))) {
          return bucket->At(slots);
        }
      }
      if (!bucket->IsFull()) {
        return nullptr;
      }
    }
    const auto place = overflow_.find(wanted.Ordered());
    return place != overflow_.end() ? *place : nullptr;
  }

  /// Looks at the first record of the home bucket with an equal tag alone, which finds more than nine records of ten. Null
  /// does not mean that there is none: Find tells then. It takes no loop, so that a caller needs few registers.
  template <class Query>
  KELMO_LOCALIZER_ALWAYS_INLINE const Record* FindFirstCandidate(
      const Query& wanted) const noexcept {
    if (homeBuckets_ == 0) {
      return nullptr;
    }
    const Bucket* const bucket = HomeOf(wanted.Hash());
    const auto slots = bucket->SlotsOf(wanted.Hash());
    if (slots == 0 || !wanted.Is(*bucket->At(slots))) {
      return nullptr;
    }
    return bucket->At(slots);
  }

  /// Adds the record that `make(memory)` makes at the front of `bytes` of memory, aligned to BlockStore::kAlignment, and
  /// returns; `make` must not throw, `hash` is the record's, and none that is equal may be there. The record stays
  /// where it is as long as the table, or until Clear. When memory fails, the table has what it had.
  template <class Make>
  const Record* Add(std::uint64_t hash, std::size_t bytes, Make make) {
    if (IsFull()) {
      Reserve(0);
    }
    std::byte* const memory = memory_.Take(bytes);
    const Record* const record = make(memory);
    try {
      Place(hash, record);
    } catch (...) {
      memory_.GiveBack(memory, bytes);
      throw;
    }
    ++count_;
    return record;
  }

  void Clear() noexcept {
    overflow_.clear();  // a new set takes memory in some libraries
    bucketMemory_.reset();
    homeBuckets_ = capacity_ = count_ = 0;
    memory_ = BlockStore();
  }

  std::size_t Count() const noexcept { return count_; }

  /// The next Add makes room for twice as many. A caller that knows how many are to come calls Reserve before.
  bool IsFull() const noexcept { return count_ == capacity_; }

  /// Makes room for `records` in all, within reason: for 64 records at first, then for twice to 64 times as many as there
  /// are. When memory fails, nothing has changed.
  void Reserve(std::size_t records);

 private:
  static constexpr std::size_t kLineBytes = 64;
  static constexpr std::size_t kFewRecords = 64;
  static constexpr std::size_t kMostGrowth =
      64;  // at a time: an expectation may be far from the truth

  static constexpr std::uint8_t TagOf(std::uint64_t hash) noexcept {
    return static_cast<std::uint8_t>(hash | 0x80U);
  }

  struct Bucket {
    std::array<std::uint8_t, kBucketRecords + 1> tags;  // 0: no record; the last one is not used
    std::array<const Record*, kBucketRecords> records;  // fill from the front

    // The highest bit of byte i where slot i has the tag of `hash`. A slot behind such a one may be set wrongly
    // (ZeroBytes), so that a caller compares the records. An empty slot and the unused last tag, which are 0, are
    // never set: the tag of a record has its highest bit.
    std::uint64_t SlotsOf(std::uint64_t hash) const noexcept {
      return ZeroBytes(WordAt(tags.data()) ^ (kEveryByte * TagOf(hash)));
    }
    auto At(std::uint64_t slots) const noexcept { return records[LowestByte(slots)]; }
    bool IsFull() const noexcept { return tags[kBucketRecords - 1] != 0; }
    void Add(std::uint8_t tag, const Record* record) noexcept {
      std::size_t slot = 0;
      while (tags[slot] != 0) {
        ++slot;
      }
      tags[slot] = tag;
      records[slot] = record;
    }
  };
  static_assert(sizeof(Bucket) == kLineBytes);

  struct Order {
    using is_transparent = void;

    bool operator()(const Record* left, const Record* right) const noexcept {
      return Compare(*left, *right) < 0;
    }
    template <class Ordered>
    bool operator()(const Record* left, const Ordered& right) const noexcept {
      return Compare(*left, right) < 0;
    }
    template <class Ordered>
    bool operator()(const Ordered& left, const Record* right) const noexcept {
      return Compare(*right, left) > 0;
    }
  };

  // The last ones are no record's home. They take what the last homes have no room for.
  std::size_t Buckets() const noexcept { return homeBuckets_ + kProbedBuckets - 1; }

  Bucket* HomeOf(std::uint64_t hash) const noexcept {
    return buckets_ + (((hash >> 32U) * homeBuckets_) >> 32U);
  }

  void Place(std::uint64_t hash, const Record* record) {
    Bucket* bucket = HomeOf(hash);
    for (std::size_t probed = 0; probed < kProbedBuckets; ++probed, ++bucket) {
      if (!bucket->IsFull()) {
        bucket->Add(TagOf(hash), record);
        return;
      }
    }
    overflow_.insert(record);
  }

  std::size_t count_ = 0;
  std::size_t capacity_ = 0;
  std::size_t homeBuckets_ = 0;
  std::unique_ptr<std::byte[]> bucketMemory_;  // zeroes are empty buckets; one more, to align them
  Bucket* buckets_ = nullptr;
  std::set<const Record*, Order> overflow_;
  BlockStore memory_;
};

template <class Record>
void RecordTable<Record>::Reserve(std::size_t records) {
  const std::size_t least = std::max(2 * count_, kFewRecords);
  const std::size_t most = std::max(kMostGrowth * count_, kFewRecords);
  RecordTable larger;
  larger.capacity_ = std::clamp(records, least, most);
  larger.homeBuckets_ =
      larger.capacity_ / (kBucketRecords * 3 / 4) + 1;  // three quarters full at most
  std::size_t space = (larger.Buckets() + 1) * kLineBytes;
  larger.bucketMemory_ = std::make_unique<std::byte[]>(space);
  void* place = larger.bucketMemory_.get();
  larger.buckets_ = static_cast<Bucket*>(std::align(kLineBytes, kLineBytes, place, space));
  for (std::size_t i = 0; homeBuckets_ != 0 && i < Buckets(); ++i) {
    for (std::size_t slot = 0; slot < kBucketRecords && buckets_[i].tags[slot] != 0; ++slot) {
      const Record* const record = buckets_[i].records[slot];
      larger.Place(record->Hash(), record);
    }
  }
  for (const Record* const record : overflow_) {
    larger.Place(record->Hash(), record);
  }
  larger.count_ = count_;
  larger.memory_ = std::move(memory_);
  *this = std::move(larger);
}

}  // namespace KelmoLibs::Localize
