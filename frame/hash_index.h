// Finds records by their hash: one cache line decides most lookups. Dictionaries and error lists
// share it; docs/design.md draws it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "frame/word.h"

namespace KelmoLibs::Localize {

/// An index over records that live elsewhere and stay where they are. It knows of each its address
/// and seven bits of its hash.
///
/// A record stands in its bucket of seven, or in one of the next: a lookup probes at most kProbedBuckets
/// buckets, even under hash flooding. A record that finds no place in kProbedBuckets is homeless, and its owner's
/// to keep in another way. Of hashes that nobody has made to collide one in ten thousand is.
template <class Record>
class HashIndex {
 public:
  static constexpr std::size_t kBucketRecords = 7;
  static constexpr std::size_t kProbedBuckets = 8;

  HashIndex() = default;  // full

  /// With room for `most` records.
  explicit HashIndex(std::size_t most);

  /// The record with `hash` that `matches` takes for the wanted one, or null. `matches` is asked of
  /// no more than kProbedBuckets * kBucketRecords records, of one in most cases; `amongHomeless`, for
  /// the answer, where the record may be homeless.
  template <class Matches, class AmongHomeless>
  const Record* Find(std::uint64_t hash, Matches matches,
                     AmongHomeless amongHomeless) const noexcept {
    if (homes_ == 0) {
      return nullptr;
    }
    const Bucket* bucket = HomeOf(hash);
    const std::uint64_t wanted = kEveryByte * TagOf(hash);
    for (std::size_t probed = 0; probed < kProbedBuckets; ++probed, ++bucket) {
      const std::uint64_t tags = bucket->Tags();
      // May report one false match, which `matches` rejects. Never a slot without a record, nor the
      // unused last tag: those are 0, and every tag of a record has its highest bit.
      for (std::uint64_t equal = ZeroBytes(tags ^ wanted); equal != 0; equal &= equal - 1) {
        const Record* const record = bucket->records[LowestByte(equal)];
        if (matches(*record)) {
          return record;
        }
      }
      if (!bucket->IsFull()) {
        return nullptr;
      }
    }
    return amongHomeless();
  }

  /// To be grown before the next Insert.
  bool IsFull() const noexcept { return count_ == most_; }

  std::size_t Count() const noexcept { return count_; }

  /// False where `record` is homeless. The caller sees to it that the index is not full and that the
  /// record is not in it.
  bool Insert(std::uint64_t hash, const Record* record) noexcept {
    Bucket* bucket = HomeOf(hash);
    for (std::size_t probed = 0; probed < kProbedBuckets; ++probed, ++bucket) {
      if (!bucket->IsFull()) {
        bucket->Add(TagOf(hash), record);
        ++count_;
        return true;
      }
    }
    return false;
  }

  /// Makes room for `most` records, more than there are. `hashOf(record)` gives the hashes again;
  /// `onHomeless(record)` is told of records without a place, and may throw: then nothing has
  /// changed. Those that were homeless before are to be inserted again.
  template <class HashOf, class OnHomeless>
  void Grow(std::size_t most, HashOf hashOf, OnHomeless onHomeless) {
    HashIndex larger(most);
    for (std::size_t i = 0; i < BucketsFor(homes_); ++i) {
      for (std::size_t slot = 0; slot < kBucketRecords && buckets_[i].tags[slot] != 0; ++slot) {
        const Record* const record = buckets_[i].records[slot];
        if (!larger.Insert(hashOf(*record), record)) {
          onHomeless(*record);
        }
      }
    }
    *this = std::move(larger);
  }

 private:
  static constexpr std::size_t kLineBytes = 64;

  struct Bucket {
    std::array<std::uint8_t, kBucketRecords + 1> tags;  // 0: no record; the last one is not used
    std::array<const Record*, kBucketRecords> records;  // fill from the front

    std::uint64_t Tags() const noexcept { return WordAt(tags.data()); }
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

  static constexpr std::uint8_t TagOf(std::uint64_t hash) noexcept {
    return static_cast<std::uint8_t>(hash | 0x80U);
  }

  // The buckets behind the last home are there for those that it has no room for.
  static constexpr std::size_t BucketsFor(std::size_t homes) noexcept {
    return homes != 0 ? homes + kProbedBuckets - 1 : 0;
  }

  Bucket* HomeOf(std::uint64_t hash) const noexcept {
    return buckets_ + (((hash >> 32U) * homes_) >> 32U);
  }

  std::size_t count_ = 0;
  std::size_t most_ = 0;
  std::size_t homes_ = 0;
  std::unique_ptr<std::byte[]> memory_;  // zeroes are empty buckets
  Bucket* buckets_ = nullptr;
};

// Three quarters full at most.
template <class Record>
HashIndex<Record>::HashIndex(std::size_t most)
    : most_(most),
      homes_(most / (kBucketRecords * 3 / 4) + 1),
      memory_(std::make_unique<std::byte[]>((BucketsFor(homes_) + 1) * kLineBytes)) {
  void* place = memory_.get();
  std::size_t space = (BucketsFor(homes_) + 1) * kLineBytes;
  buckets_ =
      static_cast<Bucket*>(std::align(kLineBytes, BucketsFor(homes_) * kLineBytes, place, space));
}

}  // namespace KelmoLibs::Localize
