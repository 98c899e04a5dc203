// How the report shows characters that nobody sees, and long lines.
#include "lang/report/visible_text.h"

#include <gtest/gtest.h>

#include <string>

#include "lang/unicode/display_width.h"

namespace KelmoLibs::Lang {
namespace {

TEST(VisibleText, ShowsWhatCannotBeSeen) {
  struct Row {
    const char* name;
    std::string bytes;
    std::string visible;
    std::string wellFormed;
  };
  const Row rows[] = {
      {"letters of every script stay", u8"\u00E9\u0416\u4E2D\U0001F600",
       u8"\u00E9\u0416\u4E2D\U0001F600", u8"\u00E9\u0416\u4E2D\U0001F600"},
      {"a letter with a combining mark stays", u8"e\u0301", u8"e\u0301", u8"e\u0301"},
      {"tab", "a\tb", u8"a\u2192b", "a\tb"},
      {"a byte of windows-1252", "enregistr\xE9", "enregistr<E9>", "enregistr<E9>"},
      {"a character cut short", "\xE4\xB8", "<E4><B8>", "<E4><B8>"},
      {"overlong", "\xC0\xAF", "<C0><AF>", "<C0><AF>"},
      {"an encoded surrogate", "\xED\xA0\x80", "<ED><A0><80>", "<ED><A0><80>"},
      {"beyond U+10FFFF", "\xF4\x90\x80\x80", "<F4><90><80><80>", "<F4><90><80><80>"},
      {"no-break spaces", u8"a\u00A0\u202Fb", "a<U+00A0><U+202F>b", u8"a\u00A0\u202Fb"},
      {"ideographic space", u8"\u3000", "<U+3000>", u8"\u3000"},
      {"zero-width space, joiner, byte-order mark", u8"\u200B\u2060\uFEFF",
       "<U+200B><U+2060><U+FEFF>", u8"\u200B\u2060\uFEFF"},
      {"soft hyphen", u8"\u00AD", "<U+00AD>", u8"\u00AD"},
      {"marks of direction", u8"\u200F\u202E\u2066", "<U+200F><U+202E><U+2066>",
       u8"\u200F\u202E\u2066"},
      {"line separator", u8"\u2028", "<U+2028>", u8"\u2028"},
      {"control characters", std::string("\0\r\x1B\x7F", 4), "<U+0000><U+000D><U+001B><U+007F>",
       std::string("\0\r\x1B\x7F", 4)},
      {"a control character of two bytes", u8"\u0085", "<U+0085>", u8"\u0085"},
      {"private and beyond U+FFFF", u8"\uE000\U000E0041", "<U+E000><U+E0041>",
       u8"\uE000\U000E0041"},
      {"nothing", "", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(VisibleText(row.bytes), row.visible);
    EXPECT_EQ(WellFormedText(row.bytes), row.wellFormed);
  }
}

TEST(VisibleText, CountsColumns) {
  struct Row {
    const char* name;
    std::string text;
    unsigned width;
  };
  const Row rows[] = {
      {"Latin, Greek, Cyrillic", u8"a\u03B1\u0430", 3},
      {"Chinese, Japanese, Korean", u8"\u4E2D\u3042\uD55C", 6},
      {"full-width and half-width forms", u8"\uFF21\uFF71", 3},
      {"a combining mark", u8"e\u0301", 1},
      {"Hebrew with points", u8"\u05D1\u05BC", 1},
      {"emoji", u8"\U0001F600", 2},
      {"first and last of a range", u8"\u1100\u115E\u0300\u036F\u0370", 5},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(WidthOf(row.text), row.width);
  }
}

// The marked part between square brackets.
std::string Marked(const Excerpt& excerpt) {
  return excerpt.text + '|' + std::string(excerpt.markStart, ' ') +
         std::string(excerpt.markWidth, '^');
}

TEST(Excerpt, ShowsTheLineAroundAPlace) {
  struct Row {
    const char* name;
    std::string line;
    std::size_t offset;
    std::uint32_t length;
    std::string marked;
  };
  // The width is 20.
  const Row rows[] = {
      {"a short line", "key text", 4, 4, "key text|    ^^^^"},
      {"a line that just fits", "abcdefghijklmnopqrst", 19, 1,
       "abcdefghijklmnopqrst|                   ^"},
      {"one column more: the end is cut", "abcdefghijklmnopqrstu", 0, 1,
       u8"abcdefghijklmnopqrs\u2026|^"},
      {"one column more: the start is cut", "abcdefghijklmnopqrstu", 20, 1,
       u8"\u2026mnopqrstu|         ^"},
      {"both ends are cut", "abcdefghijklmnopqrstuvwxyz0123456789", 18, 2,
       u8"\u2026klmnopqrstuvwxyz01\u2026|         ^^"},
      {"nothing is marked at the end of the line", "key", 3, 0, "key|   ^"},
      {"an empty line", "", 0, 0, "|^"},
      {"a bad byte", "key enregistr\xE9", 13, 1, "key enregistr<E9>|             ^^^^"},
      {"wide characters in front", u8"k\t\u4E2D\u6587x", 8, 1, u8"k\u2192\u4E2D\u6587x|      ^"},
      {"wide characters are marked", u8"\u4E2D\u6587x", 0, 2, u8"\u4E2D\u6587x|^^^^"},
      {"a combining mark in front", u8"e\u0301x", 3, 1, u8"e\u0301x| ^"},
      {"a combining mark alone is marked", u8"e\u0301x", 1, 1, u8"e\u0301x| ^"},
      {"more is marked than fits", "abcdefghijklmnopqrstuvwxyz", 2, 24,
       u8"abcdefghijklmnopqrs\u2026|  ^^^^^^^^^^^^^^^^^"},
      {"the mark ends with the line", "abc", 1, 99, "abc| ^^"},
      {"a wide character that does not fit", u8"abcdefghijklmnopqr\u4E2D\u6587", 0, 1,
       u8"abcdefghijklmnopqr\u2026|^"},
  };
  constexpr unsigned kWidth = 20;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Excerpt excerpt = ExcerptOf(row.line, row.offset, row.length, kWidth);
    EXPECT_EQ(Marked(excerpt), row.marked);
    EXPECT_LE(WidthOf(excerpt.text), kWidth);
  }
}

TEST(Excerpt, IsNoLongerThanItsWidthForEveryLineAndPlace) {
  const std::string units[] = {"a",        "\t",       "\xE9",     u8"\u00E9",
                               u8"\u4E2D", u8"\u0301", u8"\u200B", u8"\U0001F600"};
  std::uint32_t random = 1;
  constexpr int kLines = 2000;
  for (int i = 0; i < kLines; ++i) {
    std::string line;
    std::size_t offset = 0;
    for (std::uint32_t n = random >> 16U & 0x3FU; n > 0; --n) {
      random = random * 1664525U + 1013904223U;
      line += units[random >> 20U & 7U];
      offset = (random & 0x4000000U) != 0 ? line.size() : offset;
    }
    random = random * 1664525U + 1013904223U;
    const unsigned width = 12 + (random >> 20U & 31U);
    const Excerpt excerpt = ExcerptOf(line, offset, random >> 10U & 7U, width);
    EXPECT_LE(WidthOf(excerpt.text), width) << VisibleText(line) << ' ' << offset;
    EXPECT_LE(excerpt.markStart + excerpt.markWidth, width + 1)
        << VisibleText(line) << ' ' << offset;
    EXPECT_EQ(VisibleText(excerpt.text), excerpt.text);
  }
}

TEST(Excerpt, CostsTheSameInALineOfAnyLength) {
  constexpr std::size_t kSize = 50'000'000;
  const std::string line(kSize, 'x');
  for (std::size_t i = 0; i < 10'000; ++i) {  // minutes, if each call read the line
    ASSERT_EQ(Marked(ExcerptOf(line, kSize / 2 + i, 1, 20)),
              u8"\u2026xxxxxxxxxxxxxxxxxx\u2026|         ^");
  }
  const std::string marks = [] {
    std::string text;
    for (int i = 0; i < 1'000'000; ++i) {
      text += u8"\u0301";
    }
    return text;
  }();
  EXPECT_LT(ExcerptOf(marks, marks.size() / 2, 1, 20).text.size(), 400U);
}

}  // namespace
}  // namespace KelmoLibs::Lang
