#include "unittables/default_table.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "platform/embedded_table.h"
#include "tests/support/allocation_probe.h"
#include "tests/support/exported_table.h"
#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/unit_rows.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;
using Phyval::BuiltInUnits;
using Phyval::UnitCatalogue;

// ---- The table itself

// Without line ends. Cyrillic letters as escapes, so that the test does not depend on the encoding
// of this file.
const std::wstring kVersion =
    L"//\u0412\u0435\u0440\u0441\u0438\u044F \u0444\u0430\u0439\u043B\u0430 \u043E\u0442 "
    L"21.07.2020";
const std::wstring kAboutQuantities =
    L"// \u043F\u0440\u0438 \u0412\u0412\u0412=0 \u0437\u0430\u0434\u0430\u0435\u0442\u0441\u044F "
    L"\u043E\u043F\u0438\u0441\u0430\u043D\u0438\u0435 "
    L"\u0444\u0438\u0437\u0438\u0447\u0435\u0441\u043A\u043E\u0439 "
    L"\u0432\u0435\u043B\u0438\u0447\u0438\u043D\u044B, \u0430 \u043D\u0435 "
    L"\u0440\u0430\u0437\u043C\u0435\u0440\u043D\u043E\u0441\u0442\u0438";
const std::wstring kLines[] = {
    L"\uFEFF" + kVersion,
    L"10\t\t0.0\t\t\t\t\tL\t\tlength " + kAboutQuantities,
    L"10001\t1.0\t\t\t\t\t\u043C\t\tmeter",  // Cyrillic em
    L"10002\t0.0273\t\t\t\tin\t\tinch",
    L"20\t\t0.0\t\t\t\t\tS\t\tarea",
    L"20001\t1.0\t\t\t\t\tm2\t\tsquare meter",  // Latin m
    L"30001 \t0.0\t\t\t\t\tK\t\tkoefficient",
    L"40 \t\t0.0\t\t\t\t\tangl\tplane angle",
    L"40001\t1.0\t\t\t\t\t\u00B0\t\tdegree",  // degree sign
    L"40002\t57.29577951308232\trad\t\tradian",
};

std::wstring WholeText(const wchar_t* lineEnd) {
  std::wstring text;
  for (const std::wstring& line : kLines) {
    text += line;
    text += lineEnd;
  }
  return text;
}

TEST(DefaultTable, HasTheseTenLines) {
  const std::string bytes = ReadProjectFile("resources/default_unit_table.txt");
  EXPECT_EQ(bytes.size(), 700U);
  EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
  EXPECT_EQ(DecodeUnitTable(bytes), WholeText(L"\r\n"));
}

TEST(DefaultTable, IsEmbeddedByteForByte) {
  const EmbeddedTable table = FindEmbeddedUnitTable();
  ASSERT_EQ(table.status, EmbeddedTable::Status::kFound);
  EXPECT_EQ(table.bytes, ReadProjectFile("resources/default_unit_table.txt"));
}

TEST(DecodeUnitTable, DecodesUpToTheFirstZero) {
  const struct {
    const char* name;
    std::string bytes;
    std::wstring text;
  } rows[] = {
      {"nothing", "", L""},
      {"the low byte first", "\x3C\x04"s, L"\u043C"},
      {"a byte-order mark stays", "\xFF\xFEm\0"s, L"\uFEFFm"},
      {"a zero code unit ends it", "a\0\0\0b\0"s, L"a"},
      {"a zero byte does not end it", "a\0\0\x01"s, L"a\u0100"},
      {"half a code unit at the end is ignored", "a\0b"s, L"a"},
      {"without a zero", "a\0b\0"s, L"ab"},
      {"a surrogate pair is two code units", "\x3D\xD8\x00\xDE"s,
       std::wstring{wchar_t{0xD83D}, wchar_t{0xDE00}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(DecodeUnitTable(row.bytes), row.text);
  }
}

// ---- Reading it into the catalogue

TEST(ReadUnitTable, AddsLinesWithExactlyFourFields) {
  const struct {
    const char* name;
    std::wstring text;
    UnitRows units;
  } rows[] = {
      {"nothing", L"", {}},
      {"one row", L"10001\t1.5\tm\tmeter", {{10001, 1.5, L"m", L"meter"}}},
      {"line ends are LF, and a CR stays as a blank",
       L"1 1 a b\r\n2 2 c d\n",
       {{1, 1, L"a", L"b "}, {2, 2, L"c", L"d"}}},
      {"a code without digits", L"abc 1 a b", {{0, 1, L"a", L"b"}}},
      {"a code that begins with digits", L"12abc 1 a b", {{12, 1, L"a", L"b"}}},
      {"a factor without digits", L"1 abc a b", {{1, 0, L"a", L"b"}}},
      {"a code twice", L"1 1 a b\n1 2 c d", {{1, 1, L"a", L"b"}, {1, 2, L"c", L"d"}}},
      {"a quantity", L"10000 0.0 L length", {{10000, 0, L"L", L"length"}}},
      {"a code beyond 32 bits", L"9999999999 1 a b", {{2147483647, 1, L"a", L"b"}}},
      {"without a name", L"1 1 a\n2 2 c d", {{2, 2, L"c", L"d"}}},
      {"without a symbol or a factor", L"1 1\n1 a b\n2 2 c d", {{2, 2, L"c", L"d"}}},
      {"a name of two words", L"1 1 a square meter\n2 2 c d", {{2, 2, L"c", L"d"}}},
      {"two words joined by a comment", L"1 1 a square//meter", {{1, 1, L"a", L"square"}}},
      {"comments, empty lines and blanks", L"//1 1 a b\n\n \t\n\r\n2 2 c d", {{2, 2, L"c", L"d"}}},
      {"a byte-order mark before a row is part of its code",
       L"\uFEFF"
       L"1 1 a b\n2 2 c d",
       {{0, 1, L"a", L"b"}, {2, 2, L"c", L"d"}}},
      {"a NUL in a name is a blank and makes two words",
       L"1 1 a b\0c\n2 2 c d"s,
       {{2, 2, L"c", L"d"}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    UnitCatalogue catalogue;
    ReadUnitTable(row.text, catalogue);
    EXPECT_EQ(RowsOf(catalogue), row.units);
  }
}

TEST(ReadUnitTable, AppendsToTheCatalogue) {
  UnitCatalogue catalogue = {{5, 1.0, L"s", L"n"}};
  ReadUnitTable(L"5 2.0 t o", catalogue);
  EXPECT_EQ(RowsOf(catalogue), (UnitRows{{5, 1.0, L"s", L"n"}, {5, 2.0, L"t", L"o"}}));
}

TEST(LoadDefaultUnitTable, ReplacesTheCatalogue) {
  for (UnitCatalogue catalogue :
       {BuiltInUnits(), UnitCatalogue(), UnitCatalogue(1000, {10001, 5.0, L"x", L"y"})}) {
    for (int repeat = 0; repeat < 2; ++repeat) {
      EXPECT_EQ(LoadDefaultUnitTable(false, catalogue), 0);
      EXPECT_EQ(RowsOf(catalogue), kDefaultUnits);
    }
  }
}

TEST(LoadDefaultUnitTable, OmitsUnitsWithTwoWordsInTheirNames) {
  UnitCatalogue catalogue;
  ASSERT_EQ(LoadDefaultUnitTable(false, catalogue), 0);
  EXPECT_EQ(FindUnit(catalogue, 20001), nullptr);
  EXPECT_EQ(FindUnit(catalogue, 40), nullptr);
  EXPECT_EQ(FindUnit(catalogue, L"meter"), nullptr);
  ASSERT_NE(FindUnit(catalogue, 10001), nullptr);
  EXPECT_EQ(FindUnit(catalogue, L"meter "), FindUnit(catalogue, 10001));
  EXPECT_EQ(FindUnit(catalogue, L"\u043C"), FindUnit(catalogue, 10001));
}

// After a failure the catalogue has the rows that were read before it, and none of the old rows.
TEST(LoadDefaultUnitTable, PassesOnABadAllocAndRemovesTheOldRows) {
  const ScratchFolder folder;
  const ExportPlace place(folder);
  bool sawNone = false;
  bool sawSome = false;
  std::size_t n = 1;
  for (;; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n << " fails");
    const LeakCheck leakCheck;
    std::filesystem::remove(ExportPlace::kFile);
    UnitCatalogue catalogue(1, {10001, 5.0, L"x", L"y"});
    const Outcome outcome =
        CallWithFailingAllocation(n, [&] { LoadDefaultUnitTable(true, catalogue); });
    ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
    UnitRows rows = RowsOf(catalogue);
    if (outcome == Outcome::kNoFailure) {
      EXPECT_EQ(rows, kDefaultUnits);
      break;
    }
    ASSERT_LT(rows.size(), kDefaultUnits.size());
    EXPECT_TRUE(std::equal(rows.begin(), rows.end(), kDefaultUnits.begin()));
    sawNone |= rows.empty();
    sawSome |= !rows.empty();
    if (!rows.empty()) {
      EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable()) << "the file is written first";
    }
    EXPECT_EQ(LoadDefaultUnitTable(false, catalogue), 0);
    EXPECT_EQ(RowsOf(catalogue), kDefaultUnits);
  }
  EXPECT_TRUE(sawNone);
  EXPECT_TRUE(sawSome);
}

// ---- Exporting it to a file

TEST(ExportedUnitTable, IsUtf8WithACrBeforeEachLf) {
  const struct {
    const char* name;
    std::wstring text;
    std::string bytes;
  } rows[] = {
      {"nothing", L"", "\r\n"},
      {"LF", L"a\nb", "a\r\nb\r\n"},
      {"CR LF", L"a\r\n", "a\r\r\n\r\n"},
      {"a lone CR", L"a\rb", "a\rb\r\n"},
      {"a byte-order mark", L"\uFEFF//", "\xEF\xBB\xBF//\r\n"},
      {"two bytes", L"\u0080\u00B0\u043C\u07FF", "\xC2\x80\xC2\xB0\xD0\xBC\xDF\xBF\r\n"},
      {"three bytes", L"\u0800\u20AC\uFFFD", "\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBD\r\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ExportedUnitTable(row.text), row.bytes);
  }
}

TEST(ExportedUnitTable, OfTheDefaultTableEqualsTheExportedFile) {
  const std::string bytes = ExportedUnitTable(WholeText(L"\r\n"));
  EXPECT_EQ(bytes.size(), 433U);
  EXPECT_EQ(bytes, ExportedDefaultTable());
}

}  // namespace
}  // namespace KelmoLibs::Localize
