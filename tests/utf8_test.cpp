#include "frame/utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "tests/support/encode_utf8.h"
#include "tests/support/invalid_utf8.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

TEST(Utf8, TheWellFormedPartEndsAtTheFirstFault) {
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
      {"three bytes, in front of the surrogates", "\xED\x9F\xBF", 3},
      {"three bytes, behind the surrogates", "\xEE\x80\x80", 3},
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

TEST(Utf8, EveryInvalidSequenceIsAFaultWhereverItStands) {
  for (const InvalidUtf8& fault : kInvalidUtf8) {
    for (const char* const front : {"", "ab", "a\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
      for (const char* const behind : {"", "\n", "a", "\xC3\xA4", "\xF0\x9F\x98\x80"}) {
        SCOPED_TRACE(testing::Message()
                     << fault.name << " between " << testing::PrintToString(front) << " and "
                     << testing::PrintToString(behind));
        const std::string bytes = front + std::string(fault.bytes) + behind;
        EXPECT_EQ(WellFormedUtf8Length(bytes), std::string(front).size());
      }
    }
  }
}

// The same question answered the long way: the value first, then whether this form may hold it.
std::size_t PlainWellFormedLength(std::string_view bytes) {
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
    const std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < smallest[length] || (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF) {
      return position;
    }
    position += length;
  }
  return position;
}

TEST(Utf8, AgreesWithThePlainRuleOnAllShortInputs) {
  // The ends of every range that the rules tell apart.
  const std::string alphabet =
      "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFF"s;
  std::string bytes;
  for (const char a : alphabet) {
    for (const char b : alphabet) {
      for (const char c : alphabet) {
        for (const char d : alphabet) {
          bytes.assign({a, b, c, d});
          for (std::size_t length = 1; length <= bytes.size(); ++length) {
            const std::string_view front(bytes.data(), length);
            ASSERT_EQ(WellFormedUtf8Length(front), PlainWellFormedLength(front))
                << testing::PrintToString(front);
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

TEST(Utf8, EncodesAndDecodesEveryCharacter) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c == 0xD800) {
      c = 0xE000;
    }
    const std::string bytes = EncodeUtf8(c);
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

TEST(Utf8, ComparesAsTheDecodedTextsDo) {
  const std::string texts[] = {
      "",
      "\0"s,
      "a",
      "a\0"s,
      "aa",
      "ab",
      "b",
      "\x7F",
      "\xC2\x80",
      "\xC3\xA4",
      "a\xC3\xA4",
      "\xEF\xBF\x83",  // U+FFC3: what a signed char 0xC3 widens to
      "\xD1\x8F",
      "\xED\x9F\xBF",          // U+D7FF
      "\xEE\x80\x80",          // U+E000: behind every surrogate
      "\xEF\xBF\xBF",          // U+FFFF
      "\xF0\x90\x80\x80",      // U+10000: in front of U+E000 where it is a pair
      "\xF0\x90\x80\x81",      // the same high surrogate
      "\xF0\x90\x80\x80\x61",  // longer, by an a
      "\xF4\x8F\xBF\xBF",      // U+10FFFF
  };
  const auto sign = [](int order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
  for (const std::string& left : texts) {
    for (const std::string& right : texts) {
      const std::wstring text = DecodeUtf8(left);
      EXPECT_EQ(sign(CompareWithUtf8(text, right)), sign(text.compare(DecodeUtf8(right))))
          << testing::PrintToString(left) << ", " << testing::PrintToString(right);
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
