#include "host/utf16_units.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/encode_utf8.h"

namespace {

using KelmoLibs::Host::EncodeUtf16;
using KelmoLibs::Host::Utf16Length;
using Units = std::vector<std::uint16_t>;

Units UnitsOf(char32_t character) {
  if (character < 0x10000) {
    return {static_cast<std::uint16_t>(character)};
  }
  return {static_cast<std::uint16_t>(0xD800 + (character - 0x10000) / 0x400),
          static_cast<std::uint16_t>(0xDC00 + (character - 0x10000) % 0x400)};
}

Units Encode(const std::string& utf8) {
  Units units(Utf16Length(utf8) + 1, 0xABCD);
  EXPECT_EQ(EncodeUtf16(utf8, units.data()), units.data() + units.size() - 1);
  EXPECT_EQ(units.back(), 0xABCD) << "writes behind the text";
  units.pop_back();
  return units;
}

TEST(Utf16Units, EncodeEveryCharacter) {
  std::string all;
  Units expected;
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (character < 0xD800 || character > 0xDFFF) {
      const std::string utf8 = EncodeUtf8(character);
      const Units units = UnitsOf(character);
      ASSERT_EQ(Encode(utf8), units) << static_cast<std::uint32_t>(character);
      all += utf8;
      expected.insert(expected.end(), units.begin(), units.end());
    }
  }
  EXPECT_TRUE(Encode(all) == expected);
}

// Eight bytes are read at once where there are as many.
TEST(Utf16Units, EncodeEachCharacterAtEachPlaceOfAnAsciiText) {
  constexpr std::size_t kLongest = 20;
  for (const char32_t character : {U'\x7F', U'\x80', U'\u0416', U'\u4E2D', U'\U0001F600'}) {
    for (std::size_t size = 0; size <= kLongest; ++size) {
      for (std::size_t place = 0; place <= size; ++place) {
        const std::string before(place, 'a');
        const std::string behind(size - place, 'z');
        Units expected(place, 'a');
        const Units units = UnitsOf(character);
        expected.insert(expected.end(), units.begin(), units.end());
        expected.insert(expected.end(), size - place, 'z');
        EXPECT_EQ(Encode(before + EncodeUtf8(character) + behind), expected)
            << size << ' ' << place;
      }
    }
  }
}

TEST(Utf16Units, OfTheEmptyTextAreNone) { EXPECT_EQ(Encode(""), Units()); }

}  // namespace
