#include "text/crlf_source.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>

#include "tests/support/random_numbers.h"
#include "tests/support/read_all.h"
#include "tests/support/string_source.h"

namespace KelmoLibs::Localize {
namespace {

std::string ReadThroughCrLfSource(const std::string& bytes, std::size_t chunkBytes,
                                  std::size_t bufferBytes) {
  CrLfSource source(std::make_unique<StringSource>(bytes, chunkBytes));
  std::string all = ReadAll(source, bufferBytes);
  EXPECT_EQ(ReadAll(source, bufferBytes), "") << "bytes after the end";
  return all;
}

TEST(CrLfSource, ReplacesCrLfByLfAndKeepsEveryOtherCr) {
  const struct {
    const char* name;
    std::string bytes;
    std::string text;
  } rows[] = {
      {"nothing", "", ""},
      {"LF stays", "a\nb\n", "a\nb\n"},
      {"CR LF", "a\r\nb\r\n", "a\nb\n"},
      {"a lone CR", "a\rb", "a\rb"},
      {"a CR at the end", "a\r", "a\r"},
      {"only a CR", "\r", "\r"},
      {"two CR before an LF: the first stays", "a\r\r\nb", "a\r\nb"},
      {"CR CR", "\r\r", "\r\r"},
      {"LF CR", "a\n\rb", "a\n\rb"},
      {"CR LF three times", "\r\n\r\n\r\n", "\n\n\n"},
      {"0x1A is a byte",
       "a\x1A"
       "b",
       "a\x1A"
       "b"},
  };
  for (const auto& row : rows) {
    for (const std::size_t chunk : std::initializer_list<std::size_t>{1, 2, 3, 100}) {
      for (const std::size_t buffer : std::initializer_list<std::size_t>{1, 2, 3, 4, 100}) {
        SCOPED_TRACE(testing::Message()
                     << row.name << ", chunks of " << chunk << ", buffer of " << buffer);
        EXPECT_EQ(ReadThroughCrLfSource(row.bytes, chunk, buffer), row.text);
      }
    }
  }
}

std::string ReplaceCrLf(const std::string& bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes.compare(i, 2, "\r\n") != 0) {
      text += bytes[i];
    }
  }
  return text;
}

TEST(CrLfSource, EqualsTheReferenceOnAllShortInputs) {
  const std::string alphabet("\r\na\0", 4);
  for (std::size_t input = 0; input < 16384; ++input) {  // all of 7 characters
    std::string bytes;
    for (std::size_t rest = input; bytes.size() < 7; rest /= 4) {
      bytes += alphabet[rest % 4];
    }
    const std::string expected = ReplaceCrLf(bytes);
    for (const std::size_t buffer : std::initializer_list<std::size_t>{1, 2, 3, 5, 8, 100}) {
      ASSERT_EQ(ReadThroughCrLfSource(bytes, 100, buffer), expected)
          << testing::PrintToString(bytes) << ", buffer of " << buffer;
    }
  }
}

TEST(CrLfSource, EqualsTheReferenceOnRandomInputs) {
  RandomNumbers random(randomSeed);
  const std::string parts[] = {"\r",
                               "\n",
                               "\r\n",
                               "\r\r\n",
                               "\n\r",
                               "a",
                               "word",
                               "\xC3\xA4",
                               std::string(1, '\0'),
                               std::string(20, 'x')};
  for (int round = 0; round < 200; ++round) {
    std::string bytes;
    for (int i = random.Below(100); i > 0; --i) {
      bytes += AnyOf(random, parts);
    }
    const std::string expected = ReplaceCrLf(bytes);
    for (const std::size_t chunk : std::initializer_list<std::size_t>{1, 2, 3, 4, 5, 5000}) {
      for (const std::size_t buffer : std::initializer_list<std::size_t>{1, 2, 3, 4, 5, 5000}) {
        ASSERT_EQ(ReadThroughCrLfSource(bytes, chunk, buffer), expected)
            << testing::PrintToString(bytes) << ", chunks of " << chunk << ", buffer of " << buffer;
      }
    }
  }
}

TEST(CrLfSource, KeepsTheSizeHint) {
  EXPECT_EQ(CrLfSource(std::make_unique<StringSource>("a\r\nb")).SizeHint(), 4U);
}

}  // namespace
}  // namespace KelmoLibs::Localize
