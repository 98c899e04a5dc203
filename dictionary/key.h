// Keys as dictionaries keep them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "storage/text_block.h"

namespace KelmoLibs::Localize {

/// A key that is kept: its length, and behind it the characters. Each takes one, two or, on Linux, four bytes, the fewest
/// that hold all of them. U+0000 never goes into fewer bytes than a wchar_t, nor U+00FF into one: those are what
/// characters become that have no place in one byte. For one rule, U+FFFF does not go into two.
class StoredKey {
  // First, because the functions below need their types.
  // The logarithm of how many bytes each character takes.
  unsigned UnitSizeLog2() const noexcept {
    return static_cast<unsigned>(lengthAndUnitSize_) & ((1U << kUnitSizeBits) - 1);
  }

  // Calls `visit` with the characters.
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
  /// Of `text`, without its characters.
  explicit StoredKey(std::wstring_view text) noexcept;

  /// Makes a copy, with the characters of the text behind it, in Bytes() of memory, which is aligned to 8. `text` is that of
  /// which this was made.
  StoredKey* Store(std::wstring_view text, std::byte* memory) const noexcept;

  /// How many bytes it takes, with its characters: a multiple of a wchar_t's.
  std::size_t Bytes() const noexcept {
    constexpr std::size_t kUnit = sizeof(wchar_t);
    return sizeof(StoredKey) + ((Length() << UnitSizeLog2()) + kUnit - 1) / kUnit * kUnit;
  }

  std::size_t Length() const noexcept { return lengthAndUnitSize_ >> kUnitSizeBits; }

  /// HashText of it.
  std::uint64_t Hash() const noexcept {
    return Visit([this](auto* units) { return AnyTexts::Hash(units, Length()); });
  }

  /// Whether it is `text`, which is one of Texts.
  template <class Texts>
  KELMO_LOCALIZER_ALWAYS_INLINE bool Equals(std::wstring_view text) const noexcept {
    return Length() == text.size() &&
           Visit([text](auto* units) { return Texts::AreEqual(text.data(), units, text.size()); });
  }

  /// An order of keys, by length first, then by code units: negative, 0 or positive.
  friend int Compare(const StoredKey& left, const StoredKey& right) noexcept;
  friend int Compare(const StoredKey& left, std::wstring_view right) noexcept;

 private:
  static constexpr unsigned kUnitSizeBits = 2;

  std::size_t lengthAndUnitSize_;
};

/// A key that is asked for, one of Texts. The text must outlive it.
template <class Texts>
class Key {
 public:
  KELMO_LOCALIZER_ALWAYS_INLINE explicit Key(std::wstring_view text) noexcept
      : Key(text, Texts::Hash(text.data(), text.size())) {}
  /// With its hash, which is HashText of it.
  Key(std::wstring_view text, std::uint64_t hash) noexcept : text_(text), hash_(hash) {}

  std::uint64_t Hash() const noexcept { return hash_; }
  KELMO_LOCALIZER_ALWAYS_INLINE bool Is(const StoredKey& key) const noexcept {
    return key.Equals<Texts>(text_);
  }
  std::wstring_view Ordered() const noexcept { return text_; }

 private:
  std::wstring_view text_;
  std::uint64_t hash_;
};

}  // namespace KelmoLibs::Localize
