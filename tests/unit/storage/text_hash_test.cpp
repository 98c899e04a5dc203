#include "storage/text_hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kMaxLength = 100;

std::wstring RandomText(RandomNumbers& random, std::size_t length) {
  std::wstring text;
  while (text.size() < length) {
    text += static_cast<wchar_t>(random.Below(0x10000));
  }
  return text;
}

TEST(HashText, IsFixedForEachSizeOfCharacters) {
  const struct {
    const char* name;
    std::wstring text;
    std::uint64_t of16Bits;  // of wchar_t
    std::uint64_t of32Bits;
  } rows[] = {
      {"nothing", L"", 0x8DD9092E2A448508, 0x8DD9092E2A448508},
      {"one letter", L"a", 0x1E64EADE6A23EA16, 0x1E64EADE6A23EA16},
      {"two letters", L"OK", 0x162CCE97B1E55976, 0x162CCE97B1E55976},
      {"three letters", L"Yes", 0xBE5373627B8D4174, 0xBE5373627B8D4174},
      {"half a block", L"Save", 0xCA3D0BB3E562250A, 0xE4E000E985B8EF6},
      {"less than a block", L"Save as", 0xFB86808A70379C57, 0x800772A4F6CD8565},
      {"a block", L"Save all", 0xBEDFB3CEABC96A6E, 0x9D8882869C5752F8},
      {"more than a block", L"menu.file", 0xCE34B4FF3F1A8319, 0x5FB181661C16C441},
      {"two blocks", L"menu.file.open_1", 0xAAAE9F9C0FF804AE, 0x7D33DBA4DF5CA42E},
      {"more than two blocks", L"menu.file.open_12", 0xF91B6D7E51784B49, 0xAC6B91680B48F695},
      {"four blocks", L"menu.file.save.all.0123456789abc", 0xDE93D817950F0151, 0xC7BFCF5571DEF08E},
      {"more than four blocks", L"menu.file.save.all.0123456789abcd", 0x4531B41B3F337F2E,
       0xA97DBB0409F3EF29},
      {"another alphabet", L"\u0424\u0430\u0439\u043B", 0xD23B079E3DD0D8DB, 0xA12AF57E32486B16},
      {"beyond U+FFFF", L"menu.\U0001F600.file", 0x88990476815113D3, 0xE87ADF3BD16C4A76},
      {"a hundred letters", std::wstring(100, L'x'), 0x9BCA6099B8AE77CA, 0x607CF06B586A6154},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::uint64_t expected = sizeof(wchar_t) == 2 ? row.of16Bits : row.of32Bits;
    EXPECT_EQ(HashText(row.text), expected) << std::hex << HashText(row.text);
  }
}

// Each half of each character has its own factor.
TEST(HashText, UsesEveryFactor) {
  std::wstring text;
  for (unsigned i = 0; i < 32; ++i) {
    const std::uint32_t low = 0x0101 + i * 0x0107;
    text += static_cast<wchar_t>(sizeof(wchar_t) == 2 ? low : ((i % 16 + 1) << 16U) + low);
  }
  const std::uint64_t expected = sizeof(wchar_t) == 2 ? 0x15B1FAA8AA20ADAD : 0x3CC8C341887B9492;
  EXPECT_EQ(HashText(text), expected) << std::hex << HashText(text);
}

TEST(HashText, IsThatOfTheClassOfItsLength) {
  RandomNumbers random(randomSeed);
  for (std::size_t length = 0; length <= kMaxLength; ++length) {
    const std::wstring text = RandomText(random, length);
    const std::uint64_t hash = HashText(text);
    const auto equalsHashOf = [&](auto texts) { return texts.Hash(text.data(), length) == hash; };
    EXPECT_TRUE(length <= 3    ? equalsHashOf(UpTo3())
                : length <= 8  ? equalsHashOf(From4To8())
                : length <= 16 ? equalsHashOf(From9To16())
                : length <= 32 ? equalsHashOf(From17To32())
                               : equalsHashOf(AtLeast16()))
        << length;
  }
}

// The same text with characters of type Unit, in memory of exactly its size.
template <class Unit>
std::unique_ptr<Unit[]> Narrowed(const std::wstring& text) {
  std::unique_ptr<Unit[]> narrow(new Unit[text.size()]);
  std::transform(text.begin(), text.end(), narrow.get(),
                 [](wchar_t character) { return static_cast<Unit>(character); });
  return narrow;
}

template <class Unit>
void ExpectHashAndComparisonAsOfWideTexts(int characters) {
  RandomNumbers random(randomSeed);
  for (std::size_t length = 0; length <= kMaxLength; ++length) {
    SCOPED_TRACE(length);
    std::wstring text;
    while (text.size() < length) {
      text += static_cast<wchar_t>(1 + random.Below(characters));
    }
    const auto narrow = Narrowed<Unit>(text);
    EXPECT_EQ(AnyLength::Hash(narrow.get(), length), HashText(text));
    EXPECT_TRUE(AnyLength::AreEqual(text.data(), narrow.get(), length));
    std::wstring other = text;
    for (wchar_t& character : other) {
      const std::uint32_t before = std::char_traits<wchar_t>::to_int_type(character);
      for (unsigned bit = 0; bit < 8 * sizeof(wchar_t); ++bit) {
        character = static_cast<wchar_t>(before ^ (1U << bit));
        ASSERT_FALSE(AnyLength::AreEqual(other.data(), narrow.get(), length))
            << "bit " << bit << " of character " << &character - other.data();
      }
      for (const std::uint32_t value : {0U, 0xFFU, 0x100U, 0x7FFFU, 0x8000U, 0xFFFFU}) {
        character = static_cast<wchar_t>(value);
        ASSERT_EQ(AnyLength::AreEqual(other.data(), narrow.get(), length), value == before);
      }
      character = static_cast<wchar_t>(before);
    }
  }
}

TEST(AnyLength, HashesAndComparesCharactersOfOneByteLikeWideOnes) {
  ExpectHashAndComparisonAsOfWideTexts<std::uint8_t>(0xFE);
}
TEST(AnyLength, HashesAndComparesCharactersOfTwoBytesLikeWideOnes) {
  ExpectHashAndComparisonAsOfWideTexts<std::uint16_t>(0xFFFE);
}
TEST(AnyLength, HashesAndComparesWideCharactersExactly) {
  ExpectHashAndComparisonAsOfWideTexts<wchar_t>(0xFFFE);
}

TEST(HashText, DependsOnEveryCharacterAndOnTheLength) {
  RandomNumbers random(randomSeed);
  for (std::size_t length = 0; length <= kMaxLength; ++length) {
    for (const std::wstring& text : {RandomText(random, length), std::wstring(length, L'\0')}) {
      SCOPED_TRACE(testing::PrintToString(text));
      const std::uint64_t hash = HashText(text);
      EXPECT_NE(HashText(text + L'\0'), hash) << "NUL appended";
      EXPECT_NE(HashText(L'\0' + text), hash) << "NUL prepended";
      std::wstring other = text;
      for (wchar_t& character : other) {
        const wchar_t before = character;
        for (const unsigned bit : {0U, 5U, 7U, 8U, 15U}) {
          character = static_cast<wchar_t>(static_cast<unsigned>(before) ^ (1U << bit));
          EXPECT_NE(HashText(other), hash)
              << "bit " << bit << " of character " << &character - other.data();
        }
        character = before;
      }
    }
  }
}

// The memory of a text ends with the text, so that the sanitizer notices a read after it.
TEST(HashText, DependsOnTheTextOnly) {
  RandomNumbers random(randomSeed);
  for (std::size_t length = 0; length <= kMaxLength; ++length) {
    SCOPED_TRACE(length);
    const std::wstring text = RandomText(random, length);
    const std::unique_ptr<wchar_t[]> alone(new wchar_t[length]);
    std::copy(text.begin(), text.end(), alone.get());
    const std::uint64_t hash = HashText({alone.get(), length});
    for (std::size_t shift = 0; shift < 9; ++shift) {
      const std::wstring surrounded = RandomText(random, shift) + text + RandomText(random, 40);
      EXPECT_EQ(HashText(std::wstring_view(surrounded).substr(shift, length)), hash);
    }
  }
}

// RecordTable takes the home of a record from the upper half of its hash, and the tag from the
// lowest bits.
TEST(HashText, SpreadsSimilarKeysEvenly) {
  constexpr std::size_t kKeys = 100'000;
  constexpr std::size_t kHomes = 1024;
  constexpr std::size_t kTags = 128;
  struct Row {
    const char* name;
    std::wstring prefix;
    std::wstring suffix;
    wchar_t zero;  // the first of ten digits
  };
  for (const Row& row :
       {Row{"short", L"k", L"", L'0'}, Row{"usual", L"menu.file.open_", L"", L'0'},
        Row{"with the number as prefix", L"", L".menu.file.open", L'0'},
        Row{"long", L"settings.of.the.user.in.the.dialog.of.units.", L".tooltip", L'0'},
        Row{"of another alphabet", L"\u043A\u043B\u044E\u0447.", L"", L'\u0430'},
        Row{"of large characters", L"\u83DC\u5355", L"\u6587", L'\u4E00'}}) {
    SCOPED_TRACE(row.name);
    std::vector<std::size_t> homes(kHomes);
    std::vector<std::size_t> tags(kTags);
    for (std::size_t i = 0; i < kKeys; ++i) {
      std::wstring number = std::to_wstring(i);
      for (wchar_t& digit : number) {
        digit = static_cast<wchar_t>(digit - L'0' + row.zero);
      }
      const std::uint64_t hash = HashText(row.prefix + number + row.suffix);
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
