// The hash table of the library: dictionaries and lists of messages keep their records in it.
// docs/design.md has a drawing.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <type_traits>
#include <utility>

#include "storage/arena.h"
#include "storage/inlining.h"
#include "storage/word.h"

namespace KelmoLibs::Localize {

/// Records of any size. A record stays at its address until Clear() or the end of the table. A
/// bucket has the addresses of seven records and a tag of seven hash bits for each: most lookups
/// read one cache line of the table.
///
/// A record is in its home bucket or in one of the next buckets: a lookup probes at most
/// kProbedBuckets buckets. If all of these are full, the record goes to the overflow, a sorted set.
/// So a lookup is O(log n) even under hash flooding. With ordinary hashes less than one record in a
/// thousand overflows.
///
/// Requirements; none of the functions may throw:
///  - Record: Hash(); Compare(record, record), a total order that is 0 for equal records only;
///    trivially destructible; an alignment of at most Arena::kAlignment.
///  - Query: Hash(); Matches(record); SortKey(), for which Compare(record, sortKey) is the order of
///    records.
///  - A record and a query that match have equal hashes.
template <class Record>
class RecordTable {
 public:
  static constexpr std::size_t kBucketRecords = 7;
  static constexpr std::size_t kProbedBuckets = 8;

  /// `onNewBlock` is called with each block of memory for records (Arena); it may be null.
  explicit RecordTable(Arena::BlockCallback onNewBlock) noexcept(
      std::is_nothrow_default_constructible_v<Overflow>)
      : arena_(onNewBlock) {}

  /// The record that matches `query`, or null. Allocates nothing.
  template <class Query>
  const Record* Find(const Query& query) const noexcept {
    if (homeBuckets_ == 0) {
      return nullptr;
    }
    const Bucket* bucket = HomeOf(query.Hash());
    for (std::size_t probed = 0; probed < kProbedBuckets; ++probed, ++bucket) {
      for (auto slots = bucket->SlotsOf(query.Hash()); slots != 0; slots &= slots - 1) {
        if (query.Matches(*bucket->At(slots))) {
          return bucket->At(slots);
        }
      }
      if (!bucket->IsFull()) {  // no record is ever removed alone, so none is behind a free slot
        return nullptr;
      }
    }
    const auto found = overflow_.find(query.SortKey());
    return found != overflow_.end() ? *found : nullptr;
  }

  /// Looks only at the first record of the home bucket that has the tag of `query`. This finds more
  /// than nine of ten records, without a loop, so that the caller needs few registers. If the
  /// result is null, the record may still exist: call Find.
  template <class Query>
  KELMO_LOCALIZER_ALWAYS_INLINE const Record* FindFirstCandidate(
      const Query& query) const noexcept {
    if (homeBuckets_ == 0) {
      return nullptr;
    }
    const Bucket* const bucket = HomeOf(query.Hash());
    const auto slots = bucket->SlotsOf(query.Hash());
    if (slots == 0 || !query.Matches(*bucket->At(slots))) {
      return nullptr;
    }
    return bucket->At(slots);
  }

  /// Adds a record and returns it. `construct(memory)` makes it at the start of `bytes` of memory,
  /// which is aligned to Arena::kAlignment, and returns its address. `hash` is the hash of the
  /// record. Preconditions: `construct` does not throw; no equal record is in the table. Throws
  /// std::bad_alloc; the table then has the records that it had.
  template <class Constructor>
  const Record* Add(std::uint64_t hash, std::size_t bytes, Constructor construct) {
    if (IsFull()) {
      Grow(0);
    }
    std::byte* const memory = arena_.Allocate(bytes);
    const Record* const record = construct(memory);
    try {
      Insert(hash, record);
    } catch (...) {
      arena_.FreeLast(memory, bytes);
      throw;
    }
    ++count_;
    return record;
  }

  void Clear() noexcept {
    overflow_.clear();  // not a new set, which allocates memory in some standard libraries
    bucketMemory_.reset();
    homeBuckets_ = capacity_ = count_ = 0;  // without home buckets, buckets_ is not used
    arena_.Clear();
  }

  std::size_t Count() const noexcept { return count_; }

  /// Whether the next Add makes the table grow. A caller that can estimate the final count calls
  /// Grow first.
  bool IsFull() const noexcept { return count_ == capacity_; }

  /// Increases the capacity to `expectedRecords`, but to at least twice and at most 64 times the
  /// number of records. The first capacity is 64. Throws std::bad_alloc; the table is then
  /// unchanged.
  void Grow(std::size_t expectedRecords);

 private:
  static constexpr std::size_t kCacheLineBytes = 64;
  static constexpr std::size_t kInitialCapacity = 64;
  static constexpr std::size_t kMaxGrowthFactor = 64;  // an estimate may be far too large

  static constexpr std::uint8_t TagOf(std::uint64_t hash) noexcept {
    return static_cast<std::uint8_t>(hash | 0x80U);
  }

  struct Bucket {
    std::array<std::uint8_t, kBucketRecords + 1> tags;  // 0: an empty slot; the last tag is unused
    std::array<const Record*, kBucketRecords> records;  // filled from the first slot on

    // Marks the slots that have the tag of `hash`: the highest bit of byte i for slot i. A slot
    // above a marked one may be marked wrongly (ZeroBytes), so callers compare the records. Empty
    // slots and the unused tag are never marked: they are 0, and the tag of a record has its
    // highest bit set.
    std::uint64_t SlotsOf(std::uint64_t hash) const noexcept {
      return ZeroBytes(LoadWord(tags.data()) ^ (kEveryByte * TagOf(hash)));
    }
    auto At(std::uint64_t slots) const noexcept { return records[LowestByteIndex(slots)]; }
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
  static_assert(sizeof(Bucket) == kCacheLineBytes);

  struct Order {
    using is_transparent = void;

    bool operator()(const Record* left, const Record* right) const noexcept {
      return Compare(*left, *right) < 0;
    }
    template <class SortKey>
    bool operator()(const Record* left, const SortKey& right) const noexcept {
      return Compare(*left, right) < 0;
    }
    template <class SortKey>
    bool operator()(const SortKey& left, const Record* right) const noexcept {
      return Compare(*right, left) > 0;
    }
  };

  using Overflow = std::set<const Record*, Order>;

  // The last kProbedBuckets - 1 buckets are not the home of any record. They take records for which
  // the last home buckets have no room.
  std::size_t BucketCount() const noexcept { return homeBuckets_ + kProbedBuckets - 1; }

  Bucket* HomeOf(std::uint64_t hash) const noexcept {
    return buckets_ + (((hash >> 32U) * homeBuckets_) >> 32U);
  }

  void Insert(std::uint64_t hash, const Record* record) {
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
  std::unique_ptr<std::byte[]> bucketMemory_;  // has room for one bucket more, to align them
  Bucket* buckets_ = nullptr;
  Overflow overflow_;
  Arena arena_;
};

template <class Record>
void RecordTable<Record>::Grow(std::size_t expectedRecords) {
  const std::size_t minimum = std::max(2 * count_, kInitialCapacity);
  const std::size_t maximum = std::max(kMaxGrowthFactor * count_, kInitialCapacity);
  RecordTable larger(nullptr);
  larger.capacity_ = std::clamp(expectedRecords, minimum, maximum);
  larger.homeBuckets_ =
      larger.capacity_ / (kBucketRecords * 3 / 4) + 1;  // 5 of 7 slots are full at most, on average
  std::size_t space = (larger.BucketCount() + 1) * kCacheLineBytes;
  larger.bucketMemory_ = std::make_unique<std::byte[]>(space);  // zeroes: empty buckets
  void* aligned = larger.bucketMemory_.get();
  larger.buckets_ =
      static_cast<Bucket*>(std::align(kCacheLineBytes, kCacheLineBytes, aligned, space));
  for (std::size_t i = 0; homeBuckets_ != 0 && i < BucketCount(); ++i) {
    for (std::size_t slot = 0; slot < kBucketRecords && buckets_[i].tags[slot] != 0; ++slot) {
      const Record* const record = buckets_[i].records[slot];
      larger.Insert(record->Hash(), record);
    }
  }
  for (const Record* const record : overflow_) {
    larger.Insert(record->Hash(), record);
  }
  larger.count_ = count_;
  larger.arena_ = std::move(arena_);
  *this = std::move(larger);
}

}  // namespace KelmoLibs::Localize
