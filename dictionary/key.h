// The keys of a dictionary: how they are stored, and how they are looked up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "storage/text_hash.h"

namespace KelmoLibs::Localize {

/// A stored key: its length, and behind it its characters. All characters take one, two or (on
/// Linux) four bytes each: the smallest size that holds all of them. A key with U+0000 is always
/// stored as wchar_t, and one with U+00FF never in one byte: when keys are compared, characters
/// that do not fit into one byte saturate to these two values. The same rule keeps a key with
/// U+FFFF from being stored in two bytes on Linux, where wchar_t has four.
class StoredKey {
  // These two come first, because the functions below need their return types.

  // The binary logarithm of the bytes per character.
  unsigned UnitSizeLog2() const noexcept {
    return static_cast<unsigned>(lengthAndUnitSize_) & ((1U << kUnitSizeBits) - 1);
  }

  // Calls `visit` with a typed pointer to the characters.
  template <class Visitor>
  KELMO_LOCALIZER_ALWAYS_INLINE auto Visit(Visitor visit) const noexcept {
    const void* const units = this + 1;
    if (UnitSizeLog2() == 0) {
      return visit(static_cast<const std::uint8_t*>(units));
    }
    if (sizeof(wchar_t) == 4 && UnitSizeLog2() == 1) {
      return visit(static_cast<const std::uint16_t*>(units));
    }
    return visit(static_cast<const wchar_t*>(units));
  }

 public:
  /// The head of the stored form of `text`, without its characters.
  explicit StoredKey(std::wstring_view text) noexcept;

  /// Constructs the stored form of `text` in `memory`: a copy of this head and the characters.
  /// `memory` has Bytes() bytes and is aligned to 8. Precondition: the head was made from `text`.
  StoredKey* ConstructAt(std::byte* memory, std::wstring_view text) const noexcept;

  /// Size with all characters: a multiple of sizeof(wchar_t).
  std::size_t Bytes() const noexcept {
    constexpr std::size_t kUnit = sizeof(wchar_t);
    return sizeof(StoredKey) + ((Length() << UnitSizeLog2()) + kUnit - 1) / kUnit * kUnit;
  }

  std::size_t Length() const noexcept { return lengthAndUnitSize_ >> kUnitSizeBits; }

  /// HashText of the key.
  std::uint64_t Hash() const noexcept {
    return Visit([this](auto* units) { return AnyLength::Hash(units, Length()); });
  }

  /// Precondition: `text` has a length of LengthClass (storage/text_hash.h).
  template <class LengthClass>
  KELMO_LOCALIZER_ALWAYS_INLINE bool Equals(std::wstring_view text) const noexcept {
    return Length() == text.size() && Visit([text](auto* units) {
             return LengthClass::AreEqual(text.data(), units, text.size());
           });
  }

  /// Orders keys by length, then by code units. Negative, 0 or positive.
  friend int Compare(const StoredKey& left, const StoredKey& right) noexcept;
  friend int Compare(const StoredKey& left, std::wstring_view right) noexcept;

 private:
  static constexpr unsigned kUnitSizeBits = 2;

  std::size_t lengthAndUnitSize_;
};

/// A lookup of a key (a query of RecordTable). Preconditions: the text has a length of LengthClass
/// and outlives the query.
template <class LengthClass>
class KeyQuery {
 public:
  KELMO_LOCALIZER_ALWAYS_INLINE explicit KeyQuery(std::wstring_view text) noexcept
      : KeyQuery(text, LengthClass::Hash(text.data(), text.size())) {}
  /// Precondition: `hash` is HashText(text).
  KeyQuery(std::wstring_view text, std::uint64_t hash) noexcept : text_(text), hash_(hash) {}

  std::uint64_t Hash() const noexcept { return hash_; }
  KELMO_LOCALIZER_ALWAYS_INLINE bool Matches(const StoredKey& key) const noexcept {
    return key.Equals<LengthClass>(text_);
  }
  std::wstring_view SortKey() const noexcept { return text_; }

 private:
  std::wstring_view text_;
  std::uint64_t hash_;
};

}  // namespace KelmoLibs::Localize
