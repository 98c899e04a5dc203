#include "frame/ascii_word.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kCharacters = 8;

std::wstring RandomAscii(RandomNumbers& random) {
  std::wstring text;
  while (text.size() < kCharacters) {
    text += static_cast<wchar_t>(random.Below(0x80));
  }
  return text;
}

// Those whose low byte or half is ASCII, and those that saturate, among them.
std::vector<wchar_t> CharactersBeyondAscii() {
  std::vector<std::uint32_t> units = {0x80,   0xC1,   0xFF,   0x100,  0x141, 0x7FFF,
                                      0x8000, 0x8041, 0xD800, 0xFF41, 0xFFFF};
  if (sizeof(wchar_t) == 4) {
    units.insert(units.end(), {0x10000, 0x10041, 0x1F600, 0x10FFFF, 0x110041, 0x7FFFFFFF,
                               0x80000000, 0x80000041, 0xFFFFFF80, 0xFFFFFFFF});
  }
  std::vector<wchar_t> characters;
  for (const std::uint32_t unit : units) {
    characters.push_back(static_cast<wchar_t>(unit));
  }
  return characters;
}

std::uint64_t PlainWord(const std::wstring& text) {
  std::array<char, kCharacters> bytes = {};
  for (std::size_t i = 0; i < kCharacters; ++i) {
    bytes[i] = static_cast<char>(text[i]);
  }
  std::uint64_t word = 0;
  std::memcpy(&word, bytes.data(), bytes.size());
  return word;
}

template <class Words>
void ExpectWordsOfAscii() {
  RandomNumbers random(randomSeed);
  std::vector<std::wstring> texts = {std::wstring(kCharacters, L'\0'),
                                     std::wstring(kCharacters, L'\x7F'), L"menu.fil"};
  for (int i = 0; i < 1000; ++i) {
    texts.push_back(RandomAscii(random));
  }
  Words all;
  EXPECT_TRUE(all.AreAll()) << "of none";
  for (const std::wstring& text : texts) {
    Words words;
    ASSERT_EQ(words.At(text.data()), PlainWord(text)) << testing::PrintToString(text);
    ASSERT_TRUE(words.AreAll()) << testing::PrintToString(text);
    ASSERT_EQ(all.At(text.data()), PlainWord(text)) << testing::PrintToString(text);
  }
  EXPECT_TRUE(all.AreAll());
}

template <class Words>
void ExpectOneCharacterBeyondAsciiToShow() {
  RandomNumbers random(randomSeed);
  for (const wchar_t character : CharactersBeyondAscii()) {
    for (std::size_t place = 0; place < kCharacters; ++place) {
      SCOPED_TRACE(testing::Message()
                   << std::hex << static_cast<std::uint32_t>(character) << " at " << place);
      const std::wstring ascii = RandomAscii(random);
      std::wstring text = ascii;
      text[place] = character;
      Words first;
      first.At(text.data());
      EXPECT_FALSE(first.AreAll());
      first.At(ascii.data());
      EXPECT_FALSE(first.AreAll()) << "forgotten";
      Words last;
      last.At(ascii.data());
      EXPECT_TRUE(last.AreAll());
      last.At(text.data());
      EXPECT_FALSE(last.AreAll());
    }
  }
}

template <class Words>
void ExpectEightOfOneCharacterBeyondAsciiToShow() {
  for (const wchar_t character : CharactersBeyondAscii()) {
    Words words;
    words.At(std::wstring(kCharacters, character).data());
    EXPECT_FALSE(words.AreAll()) << std::hex << static_cast<std::uint32_t>(character);
  }
}

template <class Words>
void ExpectToReadEightCharacters() {
  RandomNumbers random(randomSeed);
  for (std::size_t shift = 0; shift < kCharacters; ++shift) {
    const std::wstring text = RandomAscii(random);
    const std::wstring around = std::wstring(shift, L'\u00E4') + text + L'\u00E4';
    Words words;
    EXPECT_EQ(words.At(around.data() + shift), PlainWord(text));
    EXPECT_TRUE(words.AreAll());
  }
}

TEST(PortableAsciiWords, AreTheBytesOfAscii) { ExpectWordsOfAscii<PortableAsciiWords>(); }
TEST(PortableAsciiWords, ShowOneCharacterBeyondAscii) {
  ExpectOneCharacterBeyondAsciiToShow<PortableAsciiWords>();
}
TEST(PortableAsciiWords, ShowEightOfOneCharacterBeyondAscii) {
  ExpectEightOfOneCharacterBeyondAsciiToShow<PortableAsciiWords>();
}
TEST(PortableAsciiWords, AreOfEightCharactersAlone) {
  ExpectToReadEightCharacters<PortableAsciiWords>();
}

#ifdef KELMO_LOCALIZER_SSE2
TEST(Sse2AsciiWords, AreTheBytesOfAscii) { ExpectWordsOfAscii<Sse2AsciiWords>(); }
TEST(Sse2AsciiWords, ShowOneCharacterBeyondAscii) {
  ExpectOneCharacterBeyondAsciiToShow<Sse2AsciiWords>();
}
TEST(Sse2AsciiWords, ShowEightOfOneCharacterBeyondAscii) {
  ExpectEightOfOneCharacterBeyondAsciiToShow<Sse2AsciiWords>();
}
TEST(Sse2AsciiWords, AreOfEightCharactersAlone) { ExpectToReadEightCharacters<Sse2AsciiWords>(); }

TEST(Sse2AsciiWords, AgreeWithThePortableOnes) {
  RandomNumbers random(randomSeed);
  const std::vector<wchar_t> beyond = CharactersBeyondAscii();
  int ascii = 0;
  for (int round = 0; round < 5000; ++round) {
    Sse2AsciiWords words;
    PortableAsciiWords portable;
    for (int i = 0; i < 4; ++i) {
      std::wstring text = RandomAscii(random);
      if (random.Below(5) == 0) {
        text[static_cast<std::size_t>(random.Below(8))] = AnyOf(random, beyond);
      }
      const std::uint64_t word = words.At(text.data());
      const std::uint64_t portableWord = portable.At(text.data());
      ASSERT_EQ(words.AreAll(), portable.AreAll()) << testing::PrintToString(text);
      if (!words.AreAll()) {
        break;  // the words mean nothing
      }
      ASSERT_EQ(word, portableWord) << testing::PrintToString(text);
      ++ascii;
    }
  }
  EXPECT_GT(ascii, 1000);
}
#endif

}  // namespace
}  // namespace KelmoLibs::Localize
