#include "text/utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/encode_utf8.h"
#include "tests/support/invalid_utf8.h"
#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

TEST(Utf8, TheWellFormedPrefixEndsAtTheFirstInvalidSequence) {
  const struct {
    const char* name;
    std::string bytes;
    std::size_t length;
  } rows[] = {
      {"nothing", "", 0},
      {"ASCII", "text", 4},
      {"NUL is a character", "a\0b"s, 3},
      {"delete is a character", "\x7F", 1},
      {"two bytes, first", "\xC2\x80", 2},
      {"two bytes, last", "\xDF\xBF", 2},
      {"three bytes, first", "\xE0\xA0\x80", 3},
      {"three bytes, before the surrogates", "\xED\x9F\xBF", 3},
      {"three bytes, after the surrogates", "\xEE\x80\x80", 3},
      {"U+FFFE", "\xEF\xBF\xBE", 3},
      {"U+FFFF", "\xEF\xBF\xBF", 3},
      {"byte-order mark", "\xEF\xBB\xBFtext", 7},
      {"four bytes, first", "\xF0\x90\x80\x80", 4},
      {"four bytes, last", "\xF4\x8F\xBF\xBF", 4},
      {"one continuation byte too many", "ab\xC3\xA4\xA4", 4},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(WellFormedUtf8Length(row.bytes), row.length);
  }
}

TEST(Utf8, FindsEveryInvalidSequenceBetweenOtherCharacters) {
  for (const InvalidUtf8& invalid : kInvalidUtf8) {
    for (const char* const prefix : {"", "ab", "a\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
      for (const char* const after : {"", "\n", "a", "\xC3\xA4", "\xF0\x9F\x98\x80"}) {
        SCOPED_TRACE(testing::Message()
                     << invalid.name << " between " << testing::PrintToString(prefix) << " and "
                     << testing::PrintToString(after));
        const std::string bytes = prefix + std::string(invalid.bytes) + after;
        EXPECT_EQ(WellFormedUtf8Length(bytes), std::string(prefix).size());
      }
    }
  }
}

// The reference: decodes each value first, then checks whether this length may encode it.
std::size_t ReferenceWellFormedLength(std::string_view bytes) {
  std::size_t position = 0;
  while (position < bytes.size()) {
    const auto lead = static_cast<unsigned char>(bytes[position]);
    std::size_t length = 0;
    while (length < 8 && ((lead << length) & 0x80) != 0) {
      ++length;
    }
    if (length == 0) {
      ++position;
      continue;
    }
    if (length == 1 || length > 4 || bytes.size() - position < length) {
      return position;
    }
    std::uint32_t value = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
      const auto byte = static_cast<unsigned char>(bytes[position + i]);
      if (byte / 64 != 2) {
        return position;
      }
      value = value * 64 + byte % 64;
    }
    const std::uint32_t minimum[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < minimum[length] || (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF) {
      return position;
    }
    position += length;
  }
  return position;
}

TEST(Utf8, EqualsTheReferenceOnAllShortInputs) {
  // The ends of all ranges of bytes that the rules distinguish.
  const std::string alphabet =
      "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFF"s;
  std::string bytes;
  for (const char a : alphabet) {
    for (const char b : alphabet) {
      for (const char c : alphabet) {
        for (const char d : alphabet) {
          bytes.assign({a, b, c, d});
          for (std::size_t length = 1; length <= bytes.size(); ++length) {
            const std::string_view prefix(bytes.data(), length);
            ASSERT_EQ(WellFormedUtf8Length(prefix), ReferenceWellFormedLength(prefix))
                << testing::PrintToString(prefix);
          }
        }
      }
    }
  }
}

std::wstring Wide(char32_t c) {
  if constexpr (sizeof(wchar_t) == 2) {
    if (c > 0xFFFF) {
      return {static_cast<wchar_t>(0xD7C0 + c / 1024), static_cast<wchar_t>(0xDC00 + c % 1024)};
    }
  }
  return {static_cast<wchar_t>(c)};
}

std::string Encoded(char32_t c) {
  char bytes[4];
  return {bytes, EncodeUtf8(c, bytes)};
}

TEST(Utf8, EncodesAndDecodesEveryCharacter) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c == 0xD800) {
      c = 0xE000;
    }
    const std::string bytes = Encoded(c);
    ASSERT_EQ(WellFormedUtf8Length(bytes), bytes.size())
        << "U+" << std::hex << static_cast<unsigned>(c);
    ASSERT_EQ(DecodeUtf8(bytes), Wide(c)) << "U+" << std::hex << static_cast<unsigned>(c);
    std::string appended = "x";
    AppendUtf8(c, appended);
    ASSERT_EQ(appended, "x" + bytes) << "U+" << std::hex << static_cast<unsigned>(c);
  }
}

TEST(Utf8, DecodesTexts) {
  const struct {
    const char* name;
    std::string bytes;
    std::wstring text;
  } rows[] = {
      {"nothing", "", L""},
      {"ASCII", "Save as...", L"Save as..."},
      {"German",
       "\xC3\x9C"
       "ber",
       L"\u00DCber"},
      {"Russian", "\xD0\xA4\xD0\xB0\xD0\xB9\xD0\xBB", L"\u0424\u0430\u0439\u043B"},
      {"an ASCII letter among two-byte characters", "\xC3\xA4\xC3\xB6\xC3\xBCx\xC3\xA9!",
       L"\u00E4\u00F6\u00FCx\u00E9!"},
      {"NUL inside", "a\0b"s, std::wstring(L"a\0b", 3)},
      {"byte-order mark is kept",
       "\xEF\xBB\xBF"
       "en",
       L"\uFEFF"
       L"en"},
      {"beyond U+FFFF between letters", "a\xF0\x9F\x98\x80z", L"a\U0001F600z"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(DecodeUtf8(row.bytes), row.text);
  }
}

// A character of `length` bytes, often at an end of a range.
char32_t CharacterOfBytes(RandomNumbers& random, int length) {
  constexpr char32_t kFirst[] = {0, 0x80, 0x800, 0x10000, 0x110000};
  const char32_t first = kFirst[length - 1];
  const char32_t last = kFirst[length] - 1;
  const char32_t ends[] = {first, last, length == 3 ? 0xD7FFU : first,
                           length == 3 ? 0xE000U : last};
  if (random.Below(4) == 0) {
    return AnyOf(random, ends);
  }
  const char32_t any = first + static_cast<char32_t>(random.Below(static_cast<int>(last - first)));
  return any >= 0xD800 && any <= 0xDFFF ? any - 0x800 : any;
}

// Runs of characters of equal length, as in real texts.
std::u32string RandomText(RandomNumbers& random, std::size_t minBytes) {
  std::u32string text;
  for (std::size_t bytes = 0; bytes < minBytes;) {
    const int length = 1 + random.Below(4);
    for (int run = 1 + random.Below(random.Below(2) == 0 ? 20 : 2); run > 0; --run) {
      text += CharacterOfBytes(random, length);
      bytes += static_cast<std::size_t>(length);
    }
  }
  return text;
}

std::string BytesOf(const std::u32string& text) {
  std::string bytes;
  for (const char32_t c : text) {
    bytes += Encoded(c);
  }
  return bytes;
}

std::wstring WideTextOf(const std::u32string& text) {
  std::wstring wide;
  for (const char32_t c : text) {
    wide += Wide(c);
  }
  return wide;
}

TEST(Utf8, EqualsTheReferenceOnTextsWithOneChangedByte) {
  RandomNumbers random(randomSeed);
  for (int round = 0; round < 200; ++round) {
    std::string bytes = BytesOf(RandomText(random, static_cast<std::size_t>(random.Below(150))));
    ASSERT_EQ(WellFormedUtf8Length(bytes), bytes.size()) << testing::PrintToString(bytes);
    for (char& byte : bytes) {
      const char before = byte;
      for (const int other : {0x41, 0x80, 0xBF, 0xC3, 0xE0, 0xED, 0xF4, 0xFF, random.Below(256)}) {
        byte = static_cast<char>(other);
        ASSERT_EQ(WellFormedUtf8Length(bytes), ReferenceWellFormedLength(bytes))
            << testing::PrintToString(bytes);
      }
      byte = before;
      const std::string_view prefix(bytes.data(), static_cast<std::size_t>(&byte - bytes.data()));
      ASSERT_EQ(WellFormedUtf8Length(prefix), ReferenceWellFormedLength(prefix))
          << testing::PrintToString(std::string(prefix));
    }
  }
}

TEST(Utf8, EqualsTheReferenceOnRandomBytes) {
  RandomNumbers random(randomSeed);
  // Bytes that often form characters.
  const std::string alphabet = "a\xC3\xA4\x80\x9F\xBF\xE2\x82\xAC\xED\xF0\x9F\x98\xF4\x8F";
  for (int round = 0; round < 20'000; ++round) {
    std::string bytes(static_cast<std::size_t>(random.Below(40)), 'a');
    for (int i = random.Below(60); i > 0; --i) {
      bytes += AnyOf(random, alphabet);
    }
    ASSERT_EQ(WellFormedUtf8Length(bytes), ReferenceWellFormedLength(bytes))
        << testing::PrintToString(bytes);
  }
}

// A step checks up to 32 bytes: the sequences are at every offset in a step and across two steps.
TEST(Utf8, FindsEveryInvalidSequenceAtEveryOffset) {
  for (const InvalidUtf8& invalid : kInvalidUtf8) {
    for (const char* const filling : {"a", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
      std::string prefix;
      for (std::size_t shift = 0; shift < 72; ++shift) {
        prefix = std::string(shift % 4, 'a');
        while (prefix.size() < shift) {
          prefix += filling;
        }
        const std::string bytes = prefix + std::string(invalid.bytes) + std::string(40, 'z');
        ASSERT_EQ(WellFormedUtf8Length(bytes), prefix.size())
            << invalid.name << ": " << testing::PrintToString(bytes);
      }
    }
  }
}

// Each text is in memory of exactly its size, so that sanitizers and valgrind notice a read after
// it.
TEST(Utf8, ReadsNoByteAfterTheText) {
  for (const char* const filling : {"a", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
    const std::string_view character(filling);
    for (std::size_t length = 0; length < 72; ++length) {
      std::string bytes(length % character.size(), 'a');
      while (bytes.size() < length) {
        bytes += character;
      }
      const std::unique_ptr<char[]> exact(new char[length]);
      std::copy(bytes.begin(), bytes.end(), exact.get());
      const std::string_view text(exact.get(), length);
      ASSERT_EQ(WellFormedUtf8Length(text), length);
      ASSERT_EQ(DecodeUtf8(text), DecodeUtf8(bytes));
    }
  }
}

TEST(Utf8, DecodesMixturesAtEveryAlignment) {
  RandomNumbers random(randomSeed);
  for (int round = 0; round < 3000; ++round) {
    const std::u32string text = RandomText(random, static_cast<std::size_t>(random.Below(200)));
    const auto shift = static_cast<std::size_t>(round % 17);
    const std::string shifted = std::string(shift, '\xFF') + BytesOf(text);
    std::string_view bytes = shifted;
    bytes.remove_prefix(shift);
    const std::wstring expected = WideTextOf(text);
    ASSERT_EQ(WideLength(bytes), expected.size()) << testing::PrintToString(shifted);
    std::wstring decoded(expected.size() + 3, L'#');
    const wchar_t* const end = DecodeUtf8(bytes, decoded.data() + 1);
    ASSERT_EQ(end, decoded.data() + 1 + expected.size()) << testing::PrintToString(shifted);
    decoded[1 + expected.size()] = L'#';  // only this one after the text may be overwritten
    ASSERT_EQ(decoded, L'#' + expected + L"##") << testing::PrintToString(shifted);
    ASSERT_EQ(DecodeUtf8(bytes), expected);
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
