// A key in UTF-8 that is looked up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "storage/inlining.h"
#include "storage/vector128.h"
#include "storage/word.h"

namespace KelmoLibs::Host {

namespace KeyDetails {

// Arbitrary. Without them, a key of zeroes would make a factor 0.
constexpr std::uint64_t kFirstMask = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kSecondMask = 0xC2B2AE3D27D4EB4F;

// Mixes 16 bytes and a seed into 64 bits.
inline std::uint64_t Fold(std::uint64_t first, std::uint64_t second, std::uint64_t seed) noexcept {
  return Localize::FoldedMultiply(first ^ kFirstMask ^ seed, second ^ kSecondMask);
}

inline std::uint64_t LoadHalf(const char* bytes) noexcept {
  std::uint32_t half = 0;
  std::memcpy(&half, bytes, sizeof half);
  return half;
}

// Up to 8 bytes as one word that depends on each of them; keys of equal length and equal words are
// equal.
KELMO_LOCALIZER_ALWAYS_INLINE std::uint64_t WordOf(const char* bytes, std::size_t size) noexcept {
  if (size >= Localize::kWordBytes / 2) {
    return LoadHalf(bytes) | (LoadHalf(bytes + size - Localize::kWordBytes / 2) << 32U);
  }
  if (size == 0) {
    return 0;
  }
  const auto at = [bytes](std::size_t index) {
    return static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[index]));
  };
  return at(0) | (at(size / 2) << 8U) | (at(size - 1) << 16U);
}

}  // namespace KeyDetails

/// The hash of a key: of its words, of which the last ones may overlap. It has no random seed, so
/// that every run of a program is the same: RecordTable bounds the cost of keys that are made to
/// collide.
KELMO_LOCALIZER_ALWAYS_INLINE std::uint64_t HashOfKey(std::string_view key) noexcept {
  using Localize::kWordBytes;
  using Localize::LoadWord;
  const char* const bytes = key.data();
  const std::size_t size = key.size();
  if (size <= kWordBytes) {
    return KeyDetails::Fold(KeyDetails::WordOf(bytes, size), 0, size);
  }
  std::uint64_t hash = size;
  constexpr std::size_t kStep = 2 * kWordBytes;
  for (std::size_t offset = 0; offset + kStep < size; offset += kStep) {
    hash = KeyDetails::Fold(LoadWord(bytes + offset), LoadWord(bytes + offset + kWordBytes), hash);
  }
  const std::size_t last = size < kStep ? 0 : size - kStep;
  return KeyDetails::Fold(LoadWord(bytes + last), LoadWord(bytes + size - kWordBytes), hash);
}

/// Longer keys are compared by a function of the runtime, which is faster for them. A function that
/// calls none needs fewer registers: callers may treat longer keys apart.
constexpr std::size_t kLongestUsualKey = 64;

/// Whether two keys of the same size are equal.
KELMO_LOCALIZER_ALWAYS_INLINE bool AreEqual(const char* left, const char* right,
                                            std::size_t size) noexcept {
  using Localize::kWordBytes;
  using Localize::LoadWord;
  if (size <= kWordBytes) {
    return KeyDetails::WordOf(left, size) == KeyDetails::WordOf(right, size);
  }
  if (size > kLongestUsualKey) {
    return std::memcmp(left, right, size) == 0;
  }
  const auto differenceAt = [left, right](std::size_t offset) {
    return LoadWord(left + offset) ^ LoadWord(right + offset);
  };
  constexpr std::size_t kStep = 2 * kWordBytes;  // the steps of HashOfKey
  const std::size_t last = size < kStep ? 0 : size - kStep;
  std::uint64_t difference = differenceAt(last) | differenceAt(size - kWordBytes);
  for (std::size_t offset = 0; offset + kStep < size; offset += kStep) {
    difference |= differenceAt(offset) | differenceAt(offset + kWordBytes);
  }
  return difference == 0;
}

/// A query of RecordTable. The key outlives it.
class KeyBytes {
 public:
  explicit KeyBytes(std::string_view key) noexcept : key_(key), hash_(HashOfKey(key)) {}

  std::uint64_t Hash() const noexcept { return hash_; }
  std::string_view SortKey() const noexcept { return key_; }

  template <class Record>
  KELMO_LOCALIZER_ALWAYS_INLINE bool Matches(const Record& record) const noexcept {
    return record.keySize == key_.size() && AreEqual(record.KeyData(), key_.data(), key_.size());
  }

 private:
  std::string_view key_;
  std::uint64_t hash_;
};

}  // namespace KelmoLibs::Host
