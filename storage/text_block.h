// Eight characters of a text in vectors, to be compared or hashed at once (storage/text_hash.h).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "storage/vector128.h"

namespace KelmoLibs::Localize {

constexpr std::size_t kBlockCharacters = 8;

/// Eight characters of two or four bytes each.
template <class Unit>
class TextBlock {
 public:
  TextBlock() noexcept = default;

  static constexpr std::size_t kVectors = kBlockCharacters * sizeof(Unit) / kVectorBytes;

  explicit TextBlock(const std::array<Vector128, kVectors>& vectors) noexcept : vectors_(vectors) {}

  /// The eight characters at `text`.
  explicit TextBlock(const Unit* text) noexcept {
    for (std::size_t i = 0; i < kVectors; ++i) {
      vectors_[i] = Vector128::Load(text + i * (kVectorBytes / sizeof(Unit)));
    }
  }

  /// The four characters at `first`, and the four at `second`.
  TextBlock(const Unit* first, const Unit* second) noexcept {
    if constexpr (kVectors == 2) {
      vectors_ = {Vector128::Load(first), Vector128::Load(second)};
    } else {
      vectors_ = {Vector128::LoadHalves(first, second)};
    }
  }

  const std::array<Vector128, kVectors>& Vectors() const noexcept { return vectors_; }

  /// The same characters as wchar_t.
  TextBlock<wchar_t> Widen() const noexcept {
    if constexpr (sizeof(Unit) == sizeof(wchar_t)) {
      return TextBlock<wchar_t>(vectors_);
    } else {
      return TextBlock<wchar_t>({vectors_[0].WidenLow(), vectors_[0].WidenHigh()});
    }
  }

 private:
  std::array<Vector128, kVectors> vectors_;
};

/// Eight characters of one byte each.
template <>
class TextBlock<std::uint8_t> {
 public:
  explicit TextBlock(const std::uint8_t* text) noexcept : bytes_(LoadWord(text)) {}
  TextBlock(const std::uint8_t* first, const std::uint8_t* second) noexcept
      : bytes_(LoadFourBytes(first) | (LoadFourBytes(second) << 32U)) {}

  std::uint64_t Bytes() const noexcept { return bytes_; }

  TextBlock<wchar_t> Widen() const noexcept {
    std::array<wchar_t, kBlockCharacters> wide = {};
    for (std::size_t i = 0; i < wide.size(); ++i) {
      wide[i] = static_cast<wchar_t>((bytes_ >> (8 * i)) & 0xFFU);
    }
    return TextBlock<wchar_t>(wide.data());
  }

 private:
  static std::uint64_t LoadFourBytes(const std::uint8_t* text) noexcept {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, text, sizeof(bytes));
    return bytes;
  }

  std::uint64_t bytes_;
};

/// Zero if and only if all eight characters are equal. Precondition: no character of one byte is
/// U+0000 or U+00FF.
inline std::uint64_t Difference(const TextBlock<wchar_t>& wide,
                                const TextBlock<std::uint8_t>& other) noexcept {
  // Characters that do not fit into one byte saturate to 0 or U+00FF.
  Vector128 narrow = wide.Vectors().front();
  if constexpr (TextBlock<wchar_t>::kVectors == 2) {
    narrow = Vector128::PackTo16Bits(narrow, wide.Vectors().back());
  }
  return Vector128::PackTo8Bits(narrow, narrow).Low() ^ other.Bytes();
}
template <class Unit>
Vector128 Difference(const TextBlock<wchar_t>& wide, const TextBlock<Unit>& other) noexcept {
  const TextBlock<wchar_t> otherWide = other.Widen();
  Vector128 difference;
  for (std::size_t i = 0; i < TextBlock<wchar_t>::kVectors; ++i) {
    difference = difference | (wide.Vectors()[i] ^ otherWide.Vectors()[i]);
  }
  return difference;
}

inline bool IsZero(std::uint64_t difference) noexcept { return difference == 0; }
inline bool IsZero(Vector128 difference) noexcept { return difference.IsZero(); }

}  // namespace KelmoLibs::Localize
