#include "storage/vector128.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

using Words = std::pair<std::uint64_t, std::uint64_t>;  // low, high

template <class Vector>
Words WordsOf(Vector vector) {
  return {vector.Low(), vector.High()};
}

// Lane `index` of sixteen bytes.
template <class Lane>
Lane LaneOf(const Words& words, std::size_t index) {
  const std::array bytes = {words.first, words.second};
  Lane lane = 0;
  std::memcpy(&lane, reinterpret_cast<const char*>(bytes.data()) + index * sizeof(Lane),
              sizeof(Lane));
  return lane;
}

std::vector<Words> ManyWords() {
  const std::uint64_t edges[] = {0,
                                 1,
                                 0x00FF00FE01000101,
                                 0x7FFF7FFE80008001,
                                 0x7FFFFFFF80000000,
                                 0xFFFFFFFF00010000,
                                 0x0000FFFF00007FFF,
                                 ~std::uint64_t{0}};
  std::vector<Words> words;
  for (const std::uint64_t low : edges) {
    for (const std::uint64_t high : edges) {
      words.emplace_back(low, high);
    }
  }
  RandomNumbers random(randomSeed);
  for (int i = 0; i < 1000; ++i) {
    words.emplace_back(random.Bits(), random.Bits());
    words.emplace_back(random.Bits() & 0x000000FF00FF01FF, random.Bits() & 0x007F007F00FF00FF);
  }
  return words;
}

template <class Vector>
class Vector128Test : public testing::Test {};

#ifdef KELMO_LOCALIZER_SSE2
using Implementations = testing::Types<PortableVector128, Sse2Vector128>;
#else
using Implementations = testing::Types<PortableVector128>;
#endif
TYPED_TEST_SUITE(Vector128Test, Implementations, );

TYPED_TEST(Vector128Test, LoadsSixteenBytesOrTwiceEight) {
  std::array<unsigned char, 3 * kVectorBytes> bytes = {};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<unsigned char>(7 * i + 1);
  }
  for (std::size_t shift = 0; shift < kVectorBytes; ++shift) {
    const unsigned char* const at = bytes.data() + shift;
    Words words;
    std::memcpy(&words.first, at, kWordBytes);
    std::memcpy(&words.second, at + kWordBytes, kWordBytes);
    EXPECT_EQ(WordsOf(TypeParam::Load(at)), words) << shift;
    EXPECT_EQ(WordsOf(TypeParam::LoadHalves(at + kWordBytes, at)), Words(words.second, words.first))
        << shift;
  }
}

TYPED_TEST(Vector128Test, HasTheWordsThatItIsMadeOf) {
  EXPECT_EQ(WordsOf(TypeParam()), Words(0, 0));
  for (const Words& words : ManyWords()) {
    const TypeParam vector(words.first, words.second);
    ASSERT_EQ(WordsOf(vector), words);
    ASSERT_EQ(vector.IsZero(), words == Words(0, 0));
  }
}

TYPED_TEST(Vector128Test, CombinesLaneByLane) {
  const std::vector<Words> all = ManyWords();
  Words other = all.back();
  for (const Words& words : all) {
    const auto& [low, high] = words;
    const TypeParam vector(low, high);
    const TypeParam second(other.first, other.second);
    ASSERT_EQ(WordsOf(vector ^ second), Words(low ^ other.first, high ^ other.second));
    ASSERT_EQ(WordsOf(vector | second), Words(low | other.first, high | other.second));
    const Words sums = WordsOf(vector + second);
    const Words products = WordsOf(vector.MultiplyAddPairs(second));
    for (std::size_t i = 0; i < 4; ++i) {
      ASSERT_EQ(LaneOf<std::uint32_t>(sums, i),
                static_cast<std::uint32_t>(LaneOf<std::uint32_t>(words, i) +
                                           std::uint64_t{LaneOf<std::uint32_t>(other, i)}));
      const auto product = [&](std::size_t index) {
        return std::int64_t{LaneOf<std::int16_t>(words, index)} *
               LaneOf<std::int16_t>(other, index);
      };
      ASSERT_EQ(LaneOf<std::uint32_t>(products, i),
                static_cast<std::uint32_t>(product(2 * i) + product(2 * i + 1)));
    }
    other = words;
  }
}

TYPED_TEST(Vector128Test, PacksWithSaturation) {
  const std::vector<Words> all = ManyWords();
  Words other = all.back();
  for (const Words& words : all) {
    const TypeParam low(words.first, words.second);
    const TypeParam high(other.first, other.second);
    const Words of16Bits = WordsOf(TypeParam::PackTo16Bits(low, high));
    const Words of8Bits = WordsOf(TypeParam::PackTo8Bits(low, high));
    for (std::size_t i = 0; i < 8; ++i) {
      const auto value = LaneOf<std::int32_t>(i < 4 ? words : other, i % 4);
      ASSERT_EQ(LaneOf<std::int16_t>(of16Bits, i), std::clamp(value, -0x8000, 0x7FFF));
    }
    for (std::size_t i = 0; i < 16; ++i) {
      const int value = LaneOf<std::int16_t>(i < 8 ? words : other, i % 8);
      ASSERT_EQ(LaneOf<std::uint8_t>(of8Bits, i), std::clamp(value, 0, 0xFF));
    }
    other = words;
  }
}

TYPED_TEST(Vector128Test, WidensWithoutASign) {
  for (const Words& words : ManyWords()) {
    const TypeParam vector(words.first, words.second);
    const Words low = WordsOf(vector.WidenLow());
    const Words high = WordsOf(vector.WidenHigh());
    for (std::size_t i = 0; i < 4; ++i) {
      ASSERT_EQ(LaneOf<std::uint32_t>(low, i), LaneOf<std::uint16_t>(words, i));
      ASSERT_EQ(LaneOf<std::uint32_t>(high, i), LaneOf<std::uint16_t>(words, 4 + i));
    }
  }
}

TEST(LowestByteIndex, IsTheByteOfTheLowestMark) {
  for (unsigned bytes = 1; bytes < 0x100; ++bytes) {
    std::uint64_t marks = 0;
    std::size_t lowest = 8;
    for (unsigned byte = 8; byte-- > 0;) {
      if ((bytes >> byte & 1U) != 0) {
        marks |= std::uint64_t{0x80} << (8 * byte);
        lowest = byte;
      }
    }
    EXPECT_EQ(LowestByteIndex(marks), lowest) << bytes;
    EXPECT_EQ(PortableLowestByteIndex(marks), lowest) << bytes;
  }
}

TEST(FoldedMultiply, UsesAllBitsOfTheProduct) {
  for (const auto& product : {FoldedMultiply, PortableFoldedMultiply}) {
    EXPECT_EQ(product(0, 5), 0U);
    EXPECT_EQ(product(3, 5), 15U);
    EXPECT_EQ(product(std::uint64_t{1} << 63U, 2), 1U) << "a bit above 64";
    EXPECT_EQ(product(~std::uint64_t{0}, ~std::uint64_t{0}), ~std::uint64_t{0});
  }
  for (const Words& words : ManyWords()) {
    ASSERT_EQ(FoldedMultiply(words.first, words.second),
              PortableFoldedMultiply(words.first, words.second));
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
