#include "frame/hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

constexpr std::size_t kLongest = 100;

std::string RandomBytes(RandomNumbers& random, std::size_t length) {
  std::string bytes;
  while (bytes.size() < length) {
    bytes += static_cast<char>(random.Below(256));
  }
  return bytes;
}

TEST(Hash, OfFixedTextsIsTheSameInEveryBuild) {
  const struct {
    const char* name;
    std::string bytes;
    std::uint64_t hash;
  } rows[] = {
      {"nothing", "", 0x906A901315DF7C09},
      {"NUL", "\0"s, 0x55CBD3E393F1792D},
      {"one letter", "a", 0x6B579279E8D8E3B3},
      {"less than a word", "Save as", 0x7867CDF36C0AEFE8},
      {"a word", "Save all", 0x1F2E529956A0F172},
      {"more than a word", "menu.file", 0xC013214D4E20D2BC},
      {"two words", "menu.file.save01", 0x2FC49AFEF7390A93},
      {"three words", "menu.file.save.all.01234", 0x75B5D99D33415FB4},
      {"four words", "menu.file.save.all.0123456789abc", 0xA4F4A14EF278C5F6},
      {"a byte more than four words", "menu.file.save.all.0123456789abcd", 0xF3EB2C232649376B},
      {"beyond ASCII",
       "\xC3\x9C"
       "ber.uns.selbst",
       0x8E6834780D97B26C},
      {"a hundred letters", std::string(100, 'x'), 0xED0DB376C00D2380},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(HashBytes(row.bytes), row.hash) << std::hex << HashBytes(row.bytes);
  }
}

TEST(Hash, OfEightToThirtyTwoBytesIsThatOfFourWords) {
  RandomNumbers random(randomSeed);
  for (std::size_t length = 8; length <= 32; ++length) {
    SCOPED_TRACE(length);
    ASSERT_TRUE(WordPlaces::Cover(length));
    const std::string bytes = RandomBytes(random, length);
    const auto wordAt = [&](std::size_t place) {
      std::uint64_t word = 0;
      std::memcpy(&word, bytes.data() + std::min(place, length - 8), 8);
      return word;
    };
    const FourWords words = {wordAt(0), wordAt(8), wordAt(16), wordAt(24)};
    EXPECT_TRUE(AreSame(WordsAt(bytes.data(), WordPlaces(length)), words));
    EXPECT_EQ(HashBytes(bytes), HashWords(words, length));
  }
  EXPECT_FALSE(WordPlaces::Cover(0));
  EXPECT_FALSE(WordPlaces::Cover(7));
  EXPECT_FALSE(WordPlaces::Cover(33));
}

TEST(Hash, FourWordsAreTheSameOnlyWhereEachIs) {
  const FourWords words = {1, 2, 3, 4};
  EXPECT_TRUE(AreSame(words, {1, 2, 3, 4}));
  for (const FourWords& other :
       {FourWords{0, 2, 3, 4}, FourWords{1, 3, 3, 4}, FourWords{1, 2, 1, 4},
        FourWords{1, 2, 3, std::uint64_t{4} << 60U}, FourWords{4, 3, 2, 1}}) {
    EXPECT_FALSE(AreSame(words, other));
  }
}

TEST(Hash, DependsOnEveryByteAndOnTheLength) {
  RandomNumbers random(randomSeed);
  for (std::size_t length = 0; length <= kLongest; ++length) {
    for (const std::string& bytes : {RandomBytes(random, length), std::string(length, '\0')}) {
      SCOPED_TRACE(testing::PrintToString(bytes));
      const std::uint64_t hash = HashBytes(bytes);
      EXPECT_NE(HashBytes(bytes + '\0'), hash) << "a zero behind it";
      EXPECT_NE(HashBytes('\0' + bytes), hash) << "a zero in front of it";
      std::string other = bytes;
      for (char& byte : other) {
        const char before = byte;
        for (const unsigned bit : {0U, 3U, 7U}) {
          byte = static_cast<char>(static_cast<unsigned char>(before) ^ (1U << bit));
          EXPECT_NE(HashBytes(other), hash) << "bit " << bit << " of byte " << &byte - other.data();
        }
        byte = before;
      }
    }
  }
}

// Each text ends where its memory does, which the sanitizer watches; and what stands around it has no
// part in its hash.
TEST(Hash, IsOfTheBytesAloneAndReadsNoOthers) {
  RandomNumbers random(randomSeed);
  for (std::size_t length = 0; length <= kLongest; ++length) {
    SCOPED_TRACE(length);
    const std::string bytes = RandomBytes(random, length);
    const std::unique_ptr<char[]> alone(new char[length]);
    std::copy(bytes.begin(), bytes.end(), alone.get());
    const std::uint64_t hash = HashBytes({alone.get(), length});
    for (std::size_t shift = 0; shift < 9; ++shift) {
      const std::string around = RandomBytes(random, shift) + bytes + RandomBytes(random, 40);
      EXPECT_EQ(HashBytes(std::string_view(around).substr(shift, length)), hash);
    }
  }
}

TEST(Hash, OfAWideTextIsThatOfItsBytes) {
  for (const std::wstring& text : {std::wstring(), std::wstring(L"a"), std::wstring(L"menu.file"),
                                   std::wstring(L"\u0424\0\u0430", 3), std::wstring(50, L'x')}) {
    std::string bytes(text.size() * sizeof(wchar_t), '#');
    std::memcpy(bytes.data(), text.data(), bytes.size());
    EXPECT_EQ(HashText(text), HashBytes(bytes)) << testing::PrintToString(text);
  }
}

// The index takes a record's home from the upper half of its hash, and its tag from the lowest bits.
TEST(Hash, OfKeysThatAreMuchAlikeSpreadsEvenly) {
  constexpr std::size_t kKeys = 100'000;
  constexpr std::size_t kHomes = 1024;
  constexpr std::size_t kTags = 128;
  struct Row {
    const char* name;
    std::string front;
    std::string behind;
  };
  for (const Row& row : {Row{"short", "k", ""}, Row{"usual", "menu.file.open_", ""},
                         Row{"with the number in front", "", ".menu.file.open"},
                         Row{"long", "settings.of.the.user.in.the.dialog.of.units.", ".tooltip"}}) {
    SCOPED_TRACE(row.name);
    std::vector<std::size_t> homes(kHomes);
    std::vector<std::size_t> tags(kTags);
    for (std::size_t i = 0; i < kKeys; ++i) {
      const std::uint64_t hash = HashBytes(row.front + std::to_string(i) + row.behind);
      ++homes[((hash >> 32U) * kHomes) >> 32U];
      ++tags[hash % kTags];
    }
    EXPECT_LE(*std::max_element(homes.begin(), homes.end()), 3 * kKeys / kHomes);
    EXPECT_LE(*std::max_element(tags.begin(), tags.end()), 3 * kKeys / kTags);
    EXPECT_GE(*std::min_element(homes.begin(), homes.end()), kKeys / kHomes / 3);
    EXPECT_GE(*std::min_element(tags.begin(), tags.end()), kKeys / kTags / 3);
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
