// Texts in blocks of eight characters: what keys and messages are hashed by, and keys compared by. Up to 32
// characters no branch depends on the characters, and nothing outside a text is read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "storage/inlining.h"
#include "storage/vector128.h"

namespace KelmoLibs::Localize {

constexpr std::size_t kBlockCharacters = 8;

/// Eight characters of two or four bytes each.
template <class Unit>
class TextBlock {
 public:
  TextBlock() noexcept = default;

  static constexpr std::size_t kVectors = kBlockCharacters * sizeof(Unit) / kLanesBytes;

  explicit TextBlock(const std::array<Lanes, kVectors>& lanes) noexcept : lanes_(lanes) {}

  /// The eight characters at `text`.
  explicit TextBlock(const Unit* text) noexcept {
    for (std::size_t i = 0; i < kVectors; ++i) {
      lanes_[i] = Lanes::At(text + i * (kLanesBytes / sizeof(Unit)));
    }
  }

  /// The four characters at `first`, and the four at `second`.
  TextBlock(const Unit* first, const Unit* second) noexcept {
    if constexpr (kVectors == 2) {
      lanes_ = {Lanes::At(first), Lanes::At(second)};
    } else {
      lanes_ = {Lanes::AtTwo(first, second)};
    }
  }

  const std::array<Lanes, kVectors>& Vectors() const noexcept { return lanes_; }

  /// As characters of the host's size.
  TextBlock<wchar_t> Widened() const noexcept {
    if constexpr (sizeof(Unit) == sizeof(wchar_t)) {
      return TextBlock<wchar_t>(lanes_);
    } else {
      return TextBlock<wchar_t>({lanes_[0].LowTo32Bits(), lanes_[0].HighTo32Bits()});
    }
  }

 private:
  std::array<Lanes, kVectors> lanes_;
};

/// Eight characters of one byte each.
template <>
class TextBlock<std::uint8_t> {
 public:
  explicit TextBlock(const std::uint8_t* text) noexcept : bytes_(WordAt(text)) {}
  TextBlock(const std::uint8_t* first, const std::uint8_t* second) noexcept
      : bytes_(FourBytesAt(first) | (FourBytesAt(second) << 32U)) {}

  std::uint64_t Bytes() const noexcept { return bytes_; }

  TextBlock<wchar_t> Widened() const noexcept {
    std::array<wchar_t, kBlockCharacters> wide = {};
    for (std::size_t i = 0; i < wide.size(); ++i) {
      wide[i] = static_cast<wchar_t>((bytes_ >> (8 * i)) & 0xFFU);
    }
    return TextBlock<wchar_t>(wide.data());
  }

 private:
  static std::uint64_t FourBytesAt(const std::uint8_t* text) noexcept {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, text, sizeof(bytes));
    return bytes;
  }

  std::uint64_t bytes_;
};

/// Zeroes if and only if all eight characters are equal. Characters of one byte must not be 0 or U+00FF.
inline std::uint64_t Difference(const TextBlock<wchar_t>& wide,
                                const TextBlock<std::uint8_t>& other) noexcept {
  // What has no place in one byte becomes 0 or U+00FF.
  Lanes narrow = wide.Vectors().front();
  if constexpr (TextBlock<wchar_t>::kVectors == 2) {
    narrow = Lanes::To16Bits(narrow, wide.Vectors().back());
  }
  return Lanes::To8Bits(narrow, narrow).Low() ^ other.Bytes();
}
template <class Unit>
Lanes Difference(const TextBlock<wchar_t>& wide, const TextBlock<Unit>& other) noexcept {
  const TextBlock<wchar_t> otherWide = other.Widened();
  Lanes difference;
  for (std::size_t i = 0; i < TextBlock<wchar_t>::kVectors; ++i) {
    difference = difference | (wide.Vectors()[i] ^ otherWide.Vectors()[i]);
  }
  return difference;
}

inline bool IsZero(std::uint64_t difference) noexcept { return difference == 0; }
inline bool IsZero(Lanes difference) noexcept { return difference.IsZero(); }

namespace TextBlockDetails {

// Arbitrary: without them, a text of zeroes would make a factor 0.
constexpr std::array<std::uint64_t, 2> kMasks = {0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F};

// Different primes between 2^14 and 2^15: if two characters change, their sum changes too, unless each changes by at
// least the factor of the other.
constexpr std::size_t kFactorsOfLanes = kLanesBytes / sizeof(std::int16_t);
alignas(kLanesBytes) constexpr std::array<std::int16_t, 8 * kFactorsOfLanes> kFactors = {
    31379, 30649, 32749, 32353, 19477, 21673, 30347, 29473, 18401, 23039, 28201, 19861, 16963,
    24799, 24691, 17921, 18439, 18973, 22871, 26119, 28403, 25609, 24809, 20663, 20443, 22817,
    29269, 30529, 23197, 23057, 25153, 18233, 29327, 26993, 26479, 24659, 18043, 20599, 21347,
    17107, 20507, 18269, 18077, 20261, 21563, 30809, 32321, 22129, 22613, 30713, 21601, 19751,
    29231, 18773, 16889, 21821, 31063, 21169, 20897, 28219, 21227, 17509, 16657, 29683};

// Mixes 128 bits, and a seed, into 64.
inline std::uint64_t Fold(std::uint64_t low, std::uint64_t high, std::uint64_t seed) noexcept {
  return FoldedProduct(low ^ kMasks[0] ^ seed, high ^ kMasks[1]);
}

template <std::size_t blocks>
KELMO_LOCALIZER_ALWAYS_INLINE std::uint64_t Mix(const std::array<TextBlock<wchar_t>, blocks>& texts,
                                                std::uint64_t seed) noexcept {
  constexpr std::size_t kVectors = TextBlock<wchar_t>::kVectors;
  Lanes sums;
  for (std::size_t i = 0; i < blocks * kVectors; ++i) {
    const Lanes factors = Lanes::At(kFactors.data() + i * kFactorsOfLanes);
    sums = sums + texts[i / kVectors].Vectors()[i % kVectors].SumsOfProducts(factors);
  }
  return Fold(sums.Low(), sums.High(), seed);
}

template <class Unit>
TextBlock<wchar_t> WideAt(const Unit* text) noexcept {
  return TextBlock<Unit>(text).Widened();
}

}  // namespace TextBlockDetails

// Texts are hashed and compared by their lengths: each step is the same for all lengths of a kind, so that the
// processor need not guess how long a text is. Stored texts have the length of the wide ones they are compared
// with. What a hash is made of is the same for stored and wide texts.

/// Texts of up to three characters.
struct TinyTexts {
  static constexpr std::size_t kLongest = 3;

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static std::uint64_t Hash(const Unit* text,
                                                          std::size_t length) noexcept {
    const Characters characters(text, length);
    return TextBlockDetails::Fold(characters.firstTwo, characters.last, length);
  }

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static bool AreEqual(const wchar_t* text, const Unit* stored,
                                                     std::size_t length) noexcept {
    const Characters left(text, length);
    const Characters right(stored, length);
    return ((left.firstTwo ^ right.firstTwo) | (left.last ^ right.last)) == 0;
  }

 private:
  // All of them, some perhaps twice.
  struct Characters {
    template <class Unit>
    Characters(const Unit* text, std::size_t length) noexcept {
      if (length != 0) {
        const auto at = [text](std::size_t place) {
          return static_cast<std::uint64_t>(static_cast<std::make_unsigned_t<Unit>>(text[place]));
        };
        firstTwo = at(0) | (at(length / 2) << 32U);
        last = at(length - 1);
      }
    }

    std::uint64_t firstTwo = 0;
    std::uint64_t last = 0;
  };
};

/// Texts of four to eight characters: one block.
struct ShortTexts {
  static constexpr std::size_t kLongest = kBlockCharacters;

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static std::uint64_t Hash(const Unit* text,
                                                          std::size_t length) noexcept {
    return TextBlockDetails::Mix(std::array{BlockOf(text, length).Widened()}, length);
  }

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static bool AreEqual(const wchar_t* text, const Unit* stored,
                                                     std::size_t length) noexcept {
    return IsZero(Difference(BlockOf(text, length), BlockOf(stored, length)));
  }

 private:
  template <class Unit>
  static TextBlock<Unit> BlockOf(const Unit* text, std::size_t length) noexcept {
    return {text, text + length - kBlockCharacters / 2};
  }
};

/// Texts of more than half of `blocks` blocks, and of no more than all of them: the first half of the blocks begins at the
/// front, and the other half ends at the end of a text.
template <std::size_t blocks>
struct TextsOfBlocks {
  static constexpr std::size_t kLongest = blocks * kBlockCharacters;

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static std::uint64_t Hash(const Unit* text,
                                                          std::size_t length) noexcept {
    std::array<TextBlock<wchar_t>, blocks> wide;
    for (std::size_t i = 0; i < blocks; ++i) {
      wide[i] = TextBlock<Unit>(text + Offset(i, length)).Widened();
    }
    return TextBlockDetails::Mix(wide, length);
  }

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static bool AreEqual(const wchar_t* text, const Unit* stored,
                                                     std::size_t length) noexcept {
    auto difference = Difference(TextBlock<wchar_t>(text), TextBlock<Unit>(stored));
    for (std::size_t i = 1; i < blocks; ++i) {
      const std::size_t offset = Offset(i, length);
      difference = difference |
                   Difference(TextBlock<wchar_t>{text + offset}, TextBlock<Unit>{stored + offset});
    }
    return IsZero(difference);
  }

 private:
  static constexpr std::size_t Offset(std::size_t block, std::size_t length) noexcept {
    return block < blocks / 2 ? block * kBlockCharacters
                              : length - (blocks - block) * kBlockCharacters;
  }
};

/// Texts of nine to 16 characters.
using MediumTexts = TextsOfBlocks<2>;
/// Texts of 17 to 32 characters.
using LongTexts = TextsOfBlocks<4>;

/// Texts of any length from 16 characters on: in steps of 16, of which the last one overlaps the one before it.
struct TextsInSteps {
  template <class Unit>
  static std::uint64_t Hash(const Unit* text, std::size_t length) noexcept {
    const auto mix = [text](std::size_t step, std::uint64_t seed) {
      return TextBlockDetails::Mix(
          std::array{TextBlockDetails::WideAt(text + step),
                     TextBlockDetails::WideAt(text + step + kBlockCharacters)},
          seed);
    };
    std::uint64_t hash = length;
    for (std::size_t step = 0; step < length - kStepCharacters; step += kStepCharacters) {
      hash = mix(step, hash);
    }
    return mix(length - kStepCharacters, hash);
  }

  template <class Unit>
  static bool AreEqual(const wchar_t* text, const Unit* stored, std::size_t length) noexcept {
    const auto isSame = [text, stored](std::size_t step) {
      const auto at = [text, stored](std::size_t offset) {
        return Difference(TextBlock<wchar_t>(text + offset), TextBlock<Unit>(stored + offset));
      };
      return IsZero(at(step) | at(step + kBlockCharacters));
    };
    std::size_t step = 0;
    while (step < length - kStepCharacters && isSame(step)) {
      step += kStepCharacters;
    }
    return step >= length - kStepCharacters && isSame(length - kStepCharacters);
  }

 private:
  static constexpr std::size_t kStepCharacters = 2 * kBlockCharacters;
};

/// Texts of any length: each as those of its length.
struct AnyTexts {
  template <class Unit>
  static std::uint64_t Hash(const Unit* text, std::size_t length) noexcept {
    return Visit(length, [=](auto texts) { return texts.Hash(text, length); });
  }

  template <class Unit>
  static bool AreEqual(const wchar_t* text, const Unit* stored, std::size_t length) noexcept {
    return Visit(length, [=](auto texts) { return texts.AreEqual(text, stored, length); });
  }

 private:
  template <class Visitor>
  KELMO_LOCALIZER_ALWAYS_INLINE static auto Visit(std::size_t length, Visitor visit) noexcept {
    return length <= TinyTexts::kLongest     ? visit(TinyTexts())
           : length <= ShortTexts::kLongest  ? visit(ShortTexts())
           : length <= MediumTexts::kLongest ? visit(MediumTexts())
           : length <= LongTexts::kLongest   ? visit(LongTexts())
                                             : visit(TextsInSteps());
  }
};

/// The same in every process, so that runs can be repeated; what somebody makes collide on purpose is left to
/// the bound of RecordTable.
inline std::uint64_t HashText(std::wstring_view text) noexcept {
  return AnyTexts::Hash(text.data(), text.size());
}

}  // namespace KelmoLibs::Localize
