// Whether the random files of the model's tests (model/nasty_files.h) contain lines of every shape,
// and every character in every position that may matter. The model tests no rule for what is
// missing here.

#include "tests/model/nasty_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/model/model.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/random_numbers.h"
#include "tests/support/test_platform.h"

namespace {

constexpr std::uint64_t kLifetimes = 3000;

struct Files {
  std::string (*bytesOf)(Vocabulary& words);
  int perLifetime;  // as usual in one sequence of calls
};

constexpr Files kDictionaries = {DictionaryBytes, 4};
constexpr Files kLanguageTables = {LanguageTableBytes, 2};

// Except large ones, which mostly repeat one line or character.
template <class Use>
void ForEach(const Files& files, Use use) {
  constexpr std::size_t kLarge = 2000;
  for (std::uint64_t lifetime = 0; lifetime < kLifetimes; ++lifetime) {
    RandomNumbers random(randomSeed + lifetime);
    Vocabulary words(random);
    for (int file = 0; file < files.perLifetime; ++file) {
      const std::string bytes = files.bytesOf(words);
      if (bytes.size() < kLarge) {
        use(bytes);
      }
    }
  }
}

// ---- Lines

constexpr wchar_t kOther = L'x';
constexpr wchar_t kBlanks = L'_';

wchar_t InADictionary(wchar_t c) {
  switch (c) {
    case L' ':
    case L'\t':
    case L'\r':
      return c;
    case L'\0':
      return L'0';
    case L'\uFEFF':
      return L'F';
    default:
      return kOther;
  }
}

wchar_t InAUnitTable(wchar_t c) {
  if (c == L' ' || c == L'\t') {
    return kBlanks;
  }
  if (c == L'/') {
    return c;
  }
  return SystemSaysGraphicOrBlank(c) ? kOther : L'c';
}

// The kinds of the characters. A run of kOther or of kBlanks counts once.
std::wstring ShapeOf(const std::wstring& line, wchar_t (*kindOf)(wchar_t)) {
  std::wstring shape;
  for (const wchar_t c : line) {
    const wchar_t kind = kindOf(c);
    const bool isRun = kind == kOther || kind == kBlanks;
    if (!isRun || shape.empty() || shape.back() != kind) {
      shape += kind;
    }
  }
  return shape;
}

bool IsCutByInvalidUtf8(const std::string& bytes) {
  const std::wstring text = model::Decode(bytes);
  const bool endsBefore = textModeEndsAtControlZ && text.find(L'\x1A') != std::wstring::npos;
  return !endsBefore && EncodeUtf8(text) != bytes;
}

using Shapes = std::set<std::wstring>;

struct ShapesOfLines {
  Shapes first;
  Shapes further;
};

// Where invalid UTF-8 ends a line, its shape ends with an exclamation mark.
ShapesOfLines ShapesIn(const Files& files, wchar_t (*kindOf)(wchar_t)) {
  ShapesOfLines shapes;
  ForEach(files, [&](const std::string& bytes) {
    std::vector<std::wstring> lines = model::LinesOf(bytes);
    const bool isCut = IsCutByInvalidUtf8(bytes);
    const std::wstring text = model::Decode(bytes);
    if (isCut && (text.empty() || text.back() == L'\n')) {
      lines.emplace_back();
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const std::wstring end = isCut && i + 1 == lines.size() ? L"!" : L"";
      (i == 0 ? shapes.first : shapes.further).insert(ShapeOf(lines[i], kindOf) + end);
    }
  });
  return shapes;
}

template <class Wanted>
void ExpectEach(const Shapes& shapes, const Wanted& wanted) {
  for (const std::wstring& shape : wanted) {
    EXPECT_EQ(shapes.count(shape), 1U) << testing::PrintToString(shape);
  }
}

TEST(NastyFiles, HoldDictionaryLinesOfEveryShape) {
  const std::wstring first[] = {L"",   L"x",   L"x\r",  L"x x",  L"x\tx", L"x  x", L"x ",
                                L" x", L"\tx", L"Fx",   L"Fx x", L" ",    L"x0x",  L"!",
                                L"x!", L"x !", L"x x!", L"F",    L"\rx"};
  const std::wstring further[] = {
      // Only a key
      L"", L"x", L"x\r", L"\r", L"x\rx", L"x0x", L"0", L"xF", L"Fx",
      // Only blanks and CRs behind it
      L"x ", L"x\t", L"x  ", L"x \t ", L"x\t\t", L"x \r", L"x\t\r", L"x \r\r",
      // A text, with and without blanks to remove
      L"x x", L"x\tx", L"x  x", L"x \t x", L"x\t\tx", L"x x x", L"x x\tx", L"x x\rx", L"x x0x",
      L"x Fx", L"x x ", L"x x\t", L"x x\r", L"x x \t ", L"x x \r", L"x x\r\r", L"x x0", L"x xF",
      // The empty key
      L" x", L"\tx", L"  x", L" x x", L" ", L"\t", L"  ", L" \r",
      // Invalid UTF-8
      L"!", L"x!", L"x !", L"x  !", L"x x!", L"x x !", L" !"};
  const ShapesOfLines shapes = ShapesIn(kDictionaries, InADictionary);
  ExpectEach(shapes.first, first);
  ExpectEach(shapes.further, further);
}

TEST(NastyFiles, HoldUnitLinesOfEveryShape) {
  const std::wstring first[] = {
      L"",       L"x",    L"x_x",   L"x_x_",  L"x_x_x", L"_x_x",  L"x_xc",   L"xcx_x",
      L"x_cx",   L"cx_x", L"x//_x", L"x_//x", L"x_//",  L"x_x//", L"x_x_//", L"x_x_//_x",
      L"x//x_x", L"x_x/", L"!",     L"x!",    L"x_!",   L"x_x!",
  };
  const std::wstring further[] = {
      // None to four fields
      L"", L"_", L"x", L"x_", L"x_x", L"x_x_", L"x_x_x", L"_x_x", L"_x_x_x", L"x_x_x_", L"x_x_x_x",
      L"x_x_x_x_",
      // Characters that separate fields like blanks
      L"c", L"cx", L"xc", L"x_x_xc", L"cx_x_x", L"xcx_x_x", L"x_xcx_x", L"x_x_xcx", L"xcx_x",
      L"x_cx_x", L"x_c_x", L"x_x_c", L"x_x_cx",
      // Comments, and slashes that begin none
      L"//x_x_x", L"_//x_x_x", L"x//_x_x", L"x_//x_x", L"x//x_x_x", L"x_x//_x", L"x_x//x",
      L"x_//_x_x", L"x_x_//x", L"x_x_//", L"x_x_x//", L"x_x_x_//", L"x_x_x//x", L"/x_x_x",
      L"x/_x_x", L"x/x_x_x", L"x_/x_x", L"x_x/_x", L"x_x/x_x", L"x_x_/x", L"x_x_x/", L"x_x_x/x",

      // Invalid UTF-8
      L"!", L"_!", L"x!", L"x_!", L"x_x!", L"x_x_!", L"x_x_x!"};
  const ShapesOfLines shapes = ShapesIn(kLanguageTables, InAUnitTable);
  ExpectEach(shapes.first, first);
  ExpectEach(shapes.further, further);
}

// ---- Characters

struct Position {
  const char* name;
  bool (*is)(const std::wstring& line, std::size_t i);
};

bool IsBlankAt(const std::wstring& line, std::size_t i) {
  return i < line.size() && (line[i] == L' ' || line[i] == L'\t');
}
bool IsBehindABlank(const std::wstring& line, std::size_t i) {
  return i > 0 && IsBlankAt(line, i - 1);
}
bool IsInFrontOfABlank(const std::wstring& line, std::size_t i) { return IsBlankAt(line, i + 1); }

constexpr Position kPositions[] = {
    {"start of a line", [](const std::wstring&, std::size_t i) { return i == 0; }},
    {"end of a line", [](const std::wstring& line, std::size_t i) { return i + 1 == line.size(); }},
    {"behind a blank", IsBehindABlank},
    {"in front of a blank", IsInFrontOfABlank},
    {"inside a word",
     [](const std::wstring& line, std::size_t i) {
       return i > 0 && i + 1 < line.size() && !IsBehindABlank(line, i) &&
              !IsInFrontOfABlank(line, i);
     }},
};

struct Range {
  const char* name;
  wchar_t first;
  wchar_t last;
};

constexpr Range kRanges[] = {
    {"controls of C1", 0x80, 0x9F},
    {"next line", 0x85, 0x85},
    {"no-break space", 0xA0, 0xA0},
    {"soft hyphen", 0xAD, 0xAD},
    {"Latin letters and signs", 0xAE, 0xFF},
    {"combining marks", 0x300, 0x36F},
    {"Greek", 0x370, 0x3FF},
    {"Cyrillic", 0x400, 0x4FF},
    {"Devanagari", 0x900, 0x97F},
    {"typographic spaces", 0x2000, 0x200A},
    {"zero-width characters", 0x200B, 0x200F},
    {"line separator", 0x2028, 0x2028},
    {"paragraph separator", 0x2029, 0x2029},
    {"ideographic space", 0x3000, 0x3000},
    {"Chinese", 0x4E00, 0x9FFF},
    {"Hangul", 0xAC00, 0xD7A3},
    {"before the surrogates", 0xD7FF, 0xD7FF},
    {"after the surrogates, private use", 0xE000, 0xE000},
    {"noncharacters", 0xFDD0, 0xFDEF},
    {"byte-order mark", 0xFEFF, 0xFEFF},
    {"replacement character", 0xFFFD, 0xFFFD},
    {"noncharacters at the end", 0xFFFE, 0xFFFF},
};

void ExpectEveryCharacterIn(const Files& files) {
  constexpr std::size_t kPositionCount = std::size(kPositions);
  std::set<wchar_t> seen[kPositionCount];
  ForEach(files, [&](const std::string& bytes) {
    for (const std::wstring& line : model::LinesOf(bytes)) {
      for (std::size_t i = 0; i < line.size(); ++i) {
        for (std::size_t position = 0; position < kPositionCount; ++position) {
          if (kPositions[position].is(line, i)) {
            seen[position].insert(line[i]);
          }
        }
      }
    }
  });
  for (std::size_t position = 0; position < kPositionCount; ++position) {
    SCOPED_TRACE(kPositions[position].name);
    for (wchar_t c = 0; c < 0x80; ++c) {
      const bool endsTheText = c == L'\n' || (c == L'\x1A' && textModeEndsAtControlZ);
      EXPECT_EQ(seen[position].count(c), endsTheText ? 0U : 1U)
          << "character " << static_cast<int>(c);
    }
    for (const Range& range : kRanges) {
      const auto found = seen[position].lower_bound(range.first);
      EXPECT_TRUE(found != seen[position].end() && *found <= range.last) << range.name;
    }
    const auto isBeyond = [](std::uint32_t unit) {  // or half of a surrogate pair
      return unit > 0xFFFF || (unit >= 0xD800 && unit <= 0xDFFF);
    };
    EXPECT_TRUE(std::any_of(seen[position].begin(), seen[position].end(), isBeyond))
        << "beyond U+FFFF";
  }
}

TEST(NastyFiles, HoldEveryCharacterInEveryPlaceOfADictionary) {
  ExpectEveryCharacterIn(kDictionaries);
}

TEST(NastyFiles, HoldEveryCharacterInEveryPlaceOfAUnitTable) {
  ExpectEveryCharacterIn(kLanguageTables);
}

}  // namespace
