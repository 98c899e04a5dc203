#include "text/line_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/string_source.h"
#include "text/utf8.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

Lines ReadLines(ByteSource& source) {
  LineReader reader(source);
  Lines lines;
  while (const auto line = reader.Next()) {
    lines.emplace_back(*line);
  }
  EXPECT_EQ(reader.Next(), std::nullopt) << "a line after the end";
  return lines;
}

Lines ReadLines(const std::string& bytes, std::size_t chunkBytes, std::size_t sizeHint) {
  StringSource source(bytes, chunkBytes, sizeHint);
  return ReadLines(source);
}

TEST(LineReader, SplitsAtLfAndEndsAtTheFirstInvalidByte) {
  const struct {
    const char* name;
    std::string bytes;
    Lines lines;
  } rows[] = {
      {"nothing: no line", "", {}},
      {"one LF: one empty line", "\n", {""}},
      {"a last line needs no LF", "a\nb", {"a", "b"}},
      {"an LF at the end begins no line", "a\nb\n", {"a", "b"}},
      {"empty lines are lines", "a\n\n\nb\n\n", {"a", "", "", "b", ""}},
      {"CR stays", "a\r\rb\r", {"a\r\rb\r"}},
      {"NUL is a character", "a\0b\n\0"s, {"a\0b"s, "\0"s}},
      {"a byte-order mark stays",
       "\xEF\xBB\xBF"
       "en\n",
       {"\xEF\xBB\xBF"
        "en"}},
      {"U+FFFF is a character", "a\n\xEF\xBF\xBF\nb", {"a", "\xEF\xBF\xBF", "b"}},
      {"0x1A is a character",
       "a\x1A"
       "b\nc",
       {"a\x1A"
        "b",
        "c"}},

      // Invalid bytes: the characters before them in their line are the last line.
      {"an invalid first byte: no line", "\xFFtext\nmore\n", {}},
      {"an invalid byte after an LF: no further line", "a\n\xFFtext\nmore\n", {"a"}},
      {"an invalid byte after an empty line", "a\n\n\xFF", {"a", ""}},
      {"an invalid byte inside the first line", "ab\xFFtext\nmore\n", {"ab"}},
      {"an invalid byte inside a later line", "a\nkey te\xFFxt\nmore\n", {"a", "key te"}},
      {"an invalid byte at the end of a line", "a\nb\xFF\nc\n", {"a", "b"}},
      {"a character truncated by the LF", "a\nb\xE2\x82\nc\n", {"a", "b"}},
      {"a character truncated by the end, 1 of 2", "a\nb\xC3", {"a", "b"}},
      {"a character truncated by the end, 2 of 3", "a\nb\xE2\x82", {"a", "b"}},
      {"a character truncated by the end, 3 of 4", "a\nb\xF0\x9F\x98", {"a", "b"}},
      {"only a truncated character in its line", "a\n\xF0\x9F\x98", {"a"}},
      {"only a truncated character in the file", "\xF0\x9F\x98", {}},
  };
  for (const auto& row : rows) {
    for (const std::size_t chunk : std::initializer_list<std::size_t>{1, 2, 3, 4, 5, 7, 64, 1000}) {
      for (const std::size_t hint :
           {row.bytes.size(), std::size_t{0}, std::size_t{1}, 2 * row.bytes.size()}) {
        SCOPED_TRACE(testing::Message()
                     << row.name << ", chunks of " << chunk << ", hint " << hint);
        EXPECT_EQ(ReadLines(row.bytes, chunk, hint), row.lines);
      }
    }
  }
}

// The reference: the well-formed prefix of the whole text, split at every LF.
Lines ReferenceLines(const std::string& bytes) {
  const std::string text = bytes.substr(0, WellFormedUtf8Length(bytes));
  Lines lines;
  std::size_t start = 0;
  for (std::size_t lf = 0; (lf = text.find('\n', start)) != std::string::npos; start = lf + 1) {
    lines.push_back(text.substr(start, lf - start));
  }
  if (start < text.size()) {
    lines.push_back(text.substr(start));
  }
  return lines;
}

TEST(LineReader, EqualsTheReferenceOnAllShortInputs) {
  const std::string alphabet = "a\n\xC3\xA4\xE2\x82\xF0\x9F";
  constexpr std::size_t kMaxLength = 5;
  for (std::size_t length = 0; length <= kMaxLength; ++length) {
    std::size_t inputs = 1;
    for (std::size_t i = 0; i < length; ++i) {
      inputs *= alphabet.size();
    }
    for (std::size_t input = 0; input < inputs; ++input) {
      std::string bytes;
      for (std::size_t rest = input; bytes.size() < length; rest /= alphabet.size()) {
        bytes += alphabet[rest % alphabet.size()];
      }
      const Lines expected = ReferenceLines(bytes);
      for (const std::size_t chunk : std::initializer_list<std::size_t>{1, 2, 3, 100}) {
        ASSERT_EQ(ReadLines(bytes, chunk, length), expected)
            << testing::PrintToString(bytes) << ", chunks of " << chunk;
      }
    }
  }
}

TEST(LineReader, JoinsLinesAcrossChunks) {
  // Lines around the size of a chunk, of characters of one to four bytes.
  const std::string characters[] = {"a", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
  Lines lines;
  std::string bytes;
  const std::size_t lengths[] = {0,     1,     32766, 32767,  32768,  65533,  65534,
                                 65535, 65536, 65537, 131071, 131072, 200000, 3};
  for (const std::size_t target : lengths) {
    std::string line;
    for (std::size_t i = 0; line.size() < target; ++i) {
      line += characters[i % 4];
    }
    bytes += line + "\n";
    lines.push_back(std::move(line));
  }
  for (const std::size_t chunk : {std::size_t{997}, std::size_t{65536}, bytes.size()}) {
    for (const std::size_t hint : {bytes.size(), std::size_t{0}}) {
      SCOPED_TRACE(testing::Message() << "chunks of " << chunk << ", hint " << hint);
      EXPECT_TRUE(ReadLines(bytes, chunk, hint) == lines);
    }
  }
}

TEST(LineReader, ReadsALongLineAfterShortOnes) {
  for (std::size_t emptyLines = 0; emptyLines < 5; ++emptyLines) {
    const std::string longLine = std::string(300'000, 'a') + "b";
    Lines lines(emptyLines, "");
    lines.push_back(longLine);
    EXPECT_TRUE(ReadLines(std::string(emptyLines, '\n') + longLine, SIZE_MAX, 300'000) == lines)
        << emptyLines;
  }
}

TEST(LineReader, StopsReadingSoonAfterAnInvalidByte) {
  std::string bytes(1 << 20, 'a');
  bytes[10] = '\xFF';
  StringSource source(bytes);
  EXPECT_EQ(ReadLines(source), (Lines{std::string(10, 'a')}));
  EXPECT_LE(source.BytesRead(), 65536U);
}

TEST(LineReader, AFailedReadEndsTheText) {
  // A failed read returns 0, like the end; the size hint is larger.
  StringSource source("id\nkey text\nkey2 te", SIZE_MAX, 1000);
  EXPECT_EQ(ReadLines(source), (Lines{"id", "key text", "key2 te"}));
}

TEST(LineReader, AllocatesAtMostTwiceTheBytesOfItsSource) {
  const struct {
    const char* name;
    std::string bytes;
  } rows[] = {
      {"one line of 10 MB", std::string(10'000'000, 'a')},
      {"one line just under a chunk", std::string(32767, 'a')},
      {"one line of a chunk", std::string(32768, 'a')},
      {"one line just over a chunk", std::string(32769, 'a')},
      {"one line just under two chunks", std::string(65535, 'a')},
      {"one line of two chunks", std::string(65536, 'a')},
      {"one line just over two chunks", std::string(65537, 'a')},
      {"one line just under four chunks", std::string(131071, 'a')},
      {"one line of four chunks", std::string(131072, 'a')},
      {"one line just over four chunks", std::string(131073, 'a')},
      {"one line of eight chunks", std::string(262144, 'a')},
      {"a short line before a long one", "short\n" + std::string(1'000'000, 'a')},
      {"a small file", "en\nkey text\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    StringSource source(row.bytes);
    const std::size_t before = allocation_probe::LiveBytes();
    allocation_probe::ResetPeak();
    LineReader reader(source);
    std::size_t bytes = 0;
    while (const auto line = reader.Next()) {
      bytes += line->size();
    }
    EXPECT_GT(bytes, 0U);
    EXPECT_LE(allocation_probe::PeakBytes() - before, 2 * row.bytes.size());
  }
}

TEST(LineReader, ReadsLargeChunksAndEachByteOnce) {
  std::string bytes;
  while (bytes.size() < 1'000'000) {
    bytes += "key\tA text of an ordinary length\n";
  }
  const struct {
    const char* name;
    std::size_t sizeHint;
    std::size_t chunkBytes;
  } rows[] = {
      {"exact size hint", bytes.size(), 16384},
      {"no size hint", 0, 2048},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    StringSource source(bytes, SIZE_MAX, row.sizeHint);
    LineReader reader(source);
    while (reader.Next()) {
    }
    EXPECT_EQ(source.BytesRead(), bytes.size());
    EXPECT_LE(source.ReadCalls(), bytes.size() / row.chunkBytes);
  }
}

TEST(LineReader, BuffersOneChunkOfAFileWithManyLines) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) {
    bytes += "key." + std::to_string(i) + "\ttext\n";
  }
  StringSource source(bytes);
  const std::size_t before = allocation_probe::LiveBytes();
  allocation_probe::ResetPeak();
  LineReader reader(source);
  std::size_t count = 0;
  while (reader.Next()) {
    ++count;
  }
  EXPECT_EQ(count, 100000U);
  EXPECT_LE(allocation_probe::PeakBytes() - before, 65536U);
}

}  // namespace
}  // namespace KelmoLibs::Localize
