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

template <class AnyLanes>
Words WordsOf(AnyLanes lanes) {
  return {lanes.Low(), lanes.High()};
}

// Of sixteen bytes, what stands in one lane.
template <class Lane>
Lane LaneOf(const Words& words, std::size_t place) {
  const std::array bytes = {words.first, words.second};
  Lane lane = 0;
  std::memcpy(&lane, reinterpret_cast<const char*>(bytes.data()) + place * sizeof(Lane),
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

template <class AnyLanes>
class LanesTest : public testing::Test {};

#ifdef KELMO_LOCALIZER_SSE2
using BothLanes = testing::Types<PortableVector128, Sse2Vector128>;
#else
using BothLanes = testing::Types<PortableVector128>;
#endif
TYPED_TEST_SUITE(LanesTest, BothLanes, );

TYPED_TEST(LanesTest, ReadSixteenBytesOrTwiceEight) {
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

TYPED_TEST(LanesTest, AreWhatTheirWordsAre) {
  EXPECT_EQ(WordsOf(TypeParam()), Words(0, 0));
  for (const Words& words : ManyWords()) {
    const TypeParam lanes(words.first, words.second);
    ASSERT_EQ(WordsOf(lanes), words);
    ASSERT_EQ(lanes.IsZero(), words == Words(0, 0));
  }
}

TYPED_TEST(LanesTest, AreCombinedLaneByLane) {
  const std::vector<Words> all = ManyWords();
  Words other = all.back();
  for (const Words& words : all) {
    const auto& [low, high] = words;
    const TypeParam lanes(low, high);
    const TypeParam second(other.first, other.second);
    ASSERT_EQ(WordsOf(lanes ^ second), Words(low ^ other.first, high ^ other.second));
    ASSERT_EQ(WordsOf(lanes | second), Words(low | other.first, high | other.second));
    const Words sums = WordsOf(lanes + second);
    const Words products = WordsOf(lanes.MultiplyAddPairs(second));
    for (std::size_t i = 0; i < 4; ++i) {
      ASSERT_EQ(LaneOf<std::uint32_t>(sums, i),
                static_cast<std::uint32_t>(LaneOf<std::uint32_t>(words, i) +
                                           std::uint64_t{LaneOf<std::uint32_t>(other, i)}));
      const auto product = [&](std::size_t place) {
        return std::int64_t{LaneOf<std::int16_t>(words, place)} *
               LaneOf<std::int16_t>(other, place);
      };
      ASSERT_EQ(LaneOf<std::uint32_t>(products, i),
                static_cast<std::uint32_t>(product(2 * i) + product(2 * i + 1)));
    }
    other = words;
  }
}

TYPED_TEST(LanesTest, AreNarrowedToTheNearestValue) {
  const std::vector<Words> all = ManyWords();
  Words other = all.back();
  for (const Words& words : all) {
    const TypeParam low(words.first, words.second);
    const TypeParam high(other.first, other.second);
    const Words of16Bits = WordsOf(TypeParam::PackTo16Bits(low, high));
    const Words of8Bits = WordsOf(TypeParam::PackTo8Bits(low, high));
    for (std::size_t i = 0; i < 8; ++i) {
      const std::int32_t value = LaneOf<std::int32_t>(i < 4 ? words : other, i % 4);
      ASSERT_EQ(LaneOf<std::int16_t>(of16Bits, i), std::clamp(value, -0x8000, 0x7FFF));
    }
    for (std::size_t i = 0; i < 16; ++i) {
      const int value = LaneOf<std::int16_t>(i < 8 ? words : other, i % 8);
      ASSERT_EQ(LaneOf<std::uint8_t>(of8Bits, i), std::clamp(value, 0, 0xFF));
    }
    other = words;
  }
}

TYPED_TEST(LanesTest, AreWidenedWithoutASign) {
  for (const Words& words : ManyWords()) {
    const TypeParam lanes(words.first, words.second);
    const Words low = WordsOf(lanes.WidenLow());
    const Words high = WordsOf(lanes.WidenHigh());
    for (std::size_t i = 0; i < 4; ++i) {
      ASSERT_EQ(LaneOf<std::uint32_t>(low, i), LaneOf<std::uint16_t>(words, i));
      ASSERT_EQ(LaneOf<std::uint32_t>(high, i), LaneOf<std::uint16_t>(words, 4 + i));
    }
  }
}

TEST(LowestByte, IsThatOfTheLowestBit) {
  for (unsigned bytes = 1; bytes < 0x100; ++bytes) {
    std::uint64_t bits = 0;
    std::size_t lowest = 8;
    for (unsigned byte = 8; byte-- > 0;) {
      if ((bytes >> byte & 1U) != 0) {
        bits |= std::uint64_t{0x80} << (8 * byte);
        lowest = byte;
      }
    }
    EXPECT_EQ(LowestByteIndex(bits), lowest) << bytes;
    EXPECT_EQ(PortableLowestByteIndex(bits), lowest) << bytes;
  }
}

TEST(FoldedMultiply, IsThatOfAllBits) {
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
