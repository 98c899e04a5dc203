// Places in a file.
#include "lang/reading/source_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

std::string Repeated(const std::string& piece, std::size_t size) {
  std::string bytes;
  while (bytes.size() < size) {
    bytes += piece;
  }
  return bytes;
}

// Places in long lines are counted from points between. The result is the same as without them.
TEST(SourceFile, CountsCodePointsOfLongLines) {
  constexpr std::size_t kSize = 140'000;
  const struct {
    const char* name;
    std::string line;
  } rows[] = {
      {"ASCII", Repeated("abc", kSize)},
      {"two bytes", Repeated("\u044F", kSize)},
      {"two bytes, odd", "a" + Repeated("\u044F", kSize)},
      {"three bytes", Repeated("\u2026", kSize)},
      {"four bytes", Repeated("\U0001F600", kSize)},
      {"four bytes behind one", "a" + Repeated("\U0001F600", kSize)},
      {"four bytes behind two", "ab" + Repeated("\U0001F600", kSize)},
      {"four bytes behind three", "abc" + Repeated("\U0001F600", kSize)},
      {"continuations only", Repeated("\x80", kSize)},
      {"starts only", Repeated("\xF0", kSize)},
      {"cut", Repeated("\xF0\x9F\x98", kSize)},
      {"too many continuations", Repeated("\xF0\x9F\x98\x80\x80\x80", kSize)},
      {"a short line", "abc"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const SourceFile file("de.txt", "de.txt", "de\n" + row.line + "\r\nend\n" + row.line);
    const std::string_view line = file.Line(4);
    ASSERT_EQ(line, row.line);
    const std::size_t offsets[] = {0, 65'534, 65'535, 65'536, 65'537, 131'073};
    for (const std::size_t start : offsets) {
      for (const std::size_t end : offsets) {
        if (start <= end && end <= line.size()) {
          const std::string_view part = line.substr(start, end - start);
          const Place place = file.PlaceOf(part);
          ASSERT_EQ(place.line, 4U);
          ASSERT_EQ(place.column, Localize::CountCharacters(line.substr(0, start)) + 1) << start;
          ASSERT_EQ(place.length, Localize::CountCharacters(part)) << start << ' ' << end;
        }
      }
    }
  }
}

// What the library reads of a file in UTF-16 is no part of the text that people see.
TEST(SourceFile, APartOfAnotherTextIsTheFileAsAWhole) {
  const SourceFile file("en.txt", "en.txt", std::string("\0e\0n\0\n\0k\0 \0t", 12));
  ASSERT_NE(file.EncodedAsUtf16(), Utf16::kNo);
  for (const std::string_view part : {file.Raw(), file.Raw().substr(4), file.Raw().substr(12)}) {
    const Place place = file.PlaceOf(part);
    EXPECT_EQ(place.line, 0U);
    EXPECT_EQ(place.offset, 0U);
  }
  EXPECT_EQ(file.PlaceOf(file.Line(2)).line, 2U);
}

TEST(SourceFile, PlacesOfALongLineTakeLittleTime) {
  constexpr std::size_t kSize = 20'000'000;
  constexpr std::size_t kPlaces = 500;
  const SourceFile file("de.txt", "de.txt", "de\n" + Repeated("abc", kSize));
  const auto start = std::chrono::steady_clock::now();
  const std::string_view line = file.Line(2);
  for (std::size_t i = 0; i < kPlaces; ++i) {
    const std::size_t offset = line.size() - i;
    ASSERT_EQ(file.PlaceOf(line.substr(offset)).column, offset + 1);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

}  // namespace
}  // namespace KelmoLibs::Lang
