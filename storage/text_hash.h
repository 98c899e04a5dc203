// Hash and equality of texts: keys and messages are hashed, and keys are compared, in blocks of
// eight characters. Up to 32 characters no branch depends on the characters.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "storage/inlining.h"
#include "storage/text_block.h"
#include "storage/vector128.h"

namespace KelmoLibs::Localize {

namespace TextHashDetails {

// Arbitrary. Without them, a text of zeroes would make a factor 0.
constexpr std::array<std::uint64_t, 2> kMasks = {0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F};

// Different primes between 2^14 and 2^15. The changes of two characters cancel each other out only
// if each one is at least as large as the factor of the other character.
constexpr std::size_t kFactorsPerVector = kVectorBytes / sizeof(std::int16_t);
alignas(kVectorBytes) constexpr std::array<std::int16_t, 8 * kFactorsPerVector> kFactors = {
    31379, 30649, 32749, 32353, 19477, 21673, 30347, 29473, 18401, 23039, 28201, 19861, 16963,
    24799, 24691, 17921, 18439, 18973, 22871, 26119, 28403, 25609, 24809, 20663, 20443, 22817,
    29269, 30529, 23197, 23057, 25153, 18233, 29327, 26993, 26479, 24659, 18043, 20599, 21347,
    17107, 20507, 18269, 18077, 20261, 21563, 30809, 32321, 22129, 22613, 30713, 21601, 19751,
    29231, 18773, 16889, 21821, 31063, 21169, 20897, 28219, 21227, 17509, 16657, 29683};

// Mixes 128 bits and a seed into 64 bits.
inline std::uint64_t Fold(std::uint64_t low, std::uint64_t high, std::uint64_t seed) noexcept {
  return FoldedMultiply(low ^ kMasks[0] ^ seed, high ^ kMasks[1]);
}

template <std::size_t blocks>
KELMO_LOCALIZER_ALWAYS_INLINE std::uint64_t Mix(const std::array<TextBlock<wchar_t>, blocks>& texts,
                                                std::uint64_t seed) noexcept {
  constexpr std::size_t kVectors = TextBlock<wchar_t>::kVectors;
  Vector128 sums;
  for (std::size_t i = 0; i < blocks * kVectors; ++i) {
    const Vector128 factors = Vector128::Load(kFactors.data() + i * kFactorsPerVector);
    sums = sums + texts[i / kVectors].Vectors()[i % kVectors].MultiplyAddPairs(factors);
  }
  return Fold(sums.Low(), sums.High(), seed);
}

template <class Unit>
TextBlock<wchar_t> LoadWide(const Unit* text) noexcept {
  return TextBlock<Unit>(text).Widen();
}

}  // namespace TextHashDetails

// Classes of lengths. Within a class all texts are hashed and compared by the same steps: the
// processor does not have to predict the length of a text. No function reads outside a text.
//
// Hash() is equal for a wide text and its stored form of one, two or four bytes per character.
// AreEqual() compares a wide text with a stored one of the same length.

/// Up to three characters.
struct UpTo3 {
  static constexpr std::size_t kMaxLength = 3;

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static std::uint64_t Hash(const Unit* text,
                                                          std::size_t length) noexcept {
    const Characters characters(text, length);
    return TextHashDetails::Fold(characters.firstTwo, characters.last, length);
  }

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static bool AreEqual(const wchar_t* text, const Unit* stored,
                                                     std::size_t length) noexcept {
    const Characters left(text, length);
    const Characters right(stored, length);
    return ((left.firstTwo ^ right.firstTwo) | (left.last ^ right.last)) == 0;
  }

 private:
  // All characters, some of them perhaps twice.
  struct Characters {
    template <class Unit>
    Characters(const Unit* text, std::size_t length) noexcept {
      if (length != 0) {
        const auto unitAt = [text](std::size_t index) {
          return static_cast<std::uint64_t>(static_cast<std::make_unsigned_t<Unit>>(text[index]));
        };
        firstTwo = unitAt(0) | (unitAt(length / 2) << 32U);
        last = unitAt(length - 1);
      }
    }

    std::uint64_t firstTwo = 0;
    std::uint64_t last = 0;
  };
};

/// Four to eight characters: one block, of which the halves may overlap.
struct From4To8 {
  static constexpr std::size_t kMaxLength = kBlockCharacters;

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static std::uint64_t Hash(const Unit* text,
                                                          std::size_t length) noexcept {
    return TextHashDetails::Mix(std::array{BlockOf(text, length).Widen()}, length);
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

/// More characters than half of `blocks` blocks have, and at most as many as all of them. The first
/// half of the blocks starts at the beginning of the text; the other half stops at its end. The
/// halves may overlap.
template <std::size_t blocks>
struct OverlappingBlocks {
  static constexpr std::size_t kMaxLength = blocks * kBlockCharacters;

  template <class Unit>
  KELMO_LOCALIZER_ALWAYS_INLINE static std::uint64_t Hash(const Unit* text,
                                                          std::size_t length) noexcept {
    std::array<TextBlock<wchar_t>, blocks> wide;
    for (std::size_t i = 0; i < blocks; ++i) {
      wide[i] = TextBlock<Unit>(text + Offset(i, length)).Widen();
    }
    return TextHashDetails::Mix(wide, length);
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

using From9To16 = OverlappingBlocks<2>;
using From17To32 = OverlappingBlocks<4>;

/// 16 characters or more: steps of 16 characters. The last step ends at the end of the text and may
/// overlap the one before.
struct AtLeast16 {
  template <class Unit>
  static std::uint64_t Hash(const Unit* text, std::size_t length) noexcept {
    const auto mix = [text](std::size_t step, std::uint64_t seed) {
      return TextHashDetails::Mix(
          std::array{TextHashDetails::LoadWide(text + step),
                     TextHashDetails::LoadWide(text + step + kBlockCharacters)},
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

/// Any length: finds the class of the length first.
struct AnyLength {
  template <class Unit>
  static std::uint64_t Hash(const Unit* text, std::size_t length) noexcept {
    return Visit(length, [=](auto lengthClass) { return lengthClass.Hash(text, length); });
  }

  template <class Unit>
  static bool AreEqual(const wchar_t* text, const Unit* stored, std::size_t length) noexcept {
    return Visit(length,
                 [=](auto lengthClass) { return lengthClass.AreEqual(text, stored, length); });
  }

 private:
  template <class Visitor>
  KELMO_LOCALIZER_ALWAYS_INLINE static auto Visit(std::size_t length, Visitor visit) noexcept {
    return length <= UpTo3::kMaxLength        ? visit(UpTo3())
           : length <= From4To8::kMaxLength   ? visit(From4To8())
           : length <= From9To16::kMaxLength  ? visit(From9To16())
           : length <= From17To32::kMaxLength ? visit(From17To32())
                                              : visit(AtLeast16());
  }
};

/// Hash of `text`. It has no random seed, so that every run of a program is the same: RecordTable
/// bounds the cost of keys that are made to collide.
inline std::uint64_t HashText(std::wstring_view text) noexcept {
  return AnyLength::Hash(text.data(), text.size());
}

}  // namespace KelmoLibs::Localize
