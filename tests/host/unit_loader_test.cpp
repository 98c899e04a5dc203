#include "host/unit_loader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/native_files.h"
#include "tests/host/texts_of_tests.h"
#include "tests/support/scratch_folder.h"

namespace {

using namespace KelmoLibs::Host;
using Lines = std::vector<std::string>;

Lines RowsOf(const UnitLoader& loader) {
  Lines rows;
  for (const UnitRow& row : loader.Collected().Rows()) {
    std::ostringstream text;
    text.precision(17);
    text << row.code << '|' << row.factor.high << '|' << row.symbol << '|' << row.name;
    rows.push_back(text.str());
  }
  return rows;
}

UnitRow Unit(std::int32_t code, double factor, const char* symbol) {
  UnitRow row;
  row.code = code;
  row.factor.high = factor;
  row.symbol = symbol;
  return row;
}

TEST(UnitLoader, BeginsWithTheUnitsOfTheFirstLibrary) {
  UnitLoader loader;
  EXPECT_EQ(RowsOf(loader), Lines());
  ASSERT_TRUE(loader.Start(UnitStart::kBuiltIn));
  EXPECT_EQ(RowsOf(loader),
            (Lines{"10000|0|L|length", "10001|1|\u043C|meter", "10002|0.027300000000000001|in|inch",
                   "20000|0|S|area", "20001|1|m2|square meter", "30001|1|%|koefficient",
                   "40000|0|angl|plane angle", "40001|1|\u00B0|degree",
                   "40002|57.295779513082323|rad|radian"}));
  ASSERT_TRUE(loader.Start(UnitStart::kAfterInit));
  EXPECT_EQ(RowsOf(loader),
            (Lines{"10000|0|L|length", "10001|1|\u043C|meter", "10002|0.027300000000000001|in|inch",
                   "20000|0|S|area", "30001|0|K|koefficient", "40001|1|\u00B0|degree",
                   "40002|57.295779513082323|rad|radian"}));
  ASSERT_TRUE(loader.Start(UnitStart::kNone));
  EXPECT_EQ(RowsOf(loader), Lines());
}

// The numbers of those units are the doubles that the first library has.
TEST(UnitLoader, FactorsOfTheFirstLibraryHaveNoLowPart) {
  UnitLoader loader;
  ASSERT_TRUE(loader.Start(UnitStart::kBuiltIn));
  for (const UnitRow& row : loader.Collected().Rows()) {
    EXPECT_EQ(row.factor.low, 0) << row.code;
    EXPECT_EQ(row.offset.high, 0) << row.code;
  }
}

TEST(UnitLoader, AReplacedUnitKeepsItsPlace) {
  UnitLoader loader;
  ProblemList problems;
  EXPECT_TRUE(loader.Add(Unit(10001, 1, "m"), &problems));
  EXPECT_TRUE(loader.Add(Unit(10002, 2, "in"), &problems));
  EXPECT_TRUE(loader.Add(Unit(10001, 3, "new"), &problems));
  EXPECT_EQ(RowsOf(loader), (Lines{"10001|3|new|", "10002|2|in|"}));
  loader.AddMemory("10002\t4\t\tfile\t\n10003\t5\t\tmm\t\n10002\t6\t\tlater\t\n", "f",
                   UnitFileFormat::kUnits, nullptr);
  EXPECT_EQ(RowsOf(loader), (Lines{"10001|3|new|", "10002|4|file|", "10003|5|mm|"}));
  EXPECT_TRUE(loader.Add(Unit(10, 0, "L"), &problems));
  EXPECT_TRUE(loader.Add(Unit(10000, 0, "M"), &problems)) << "the same kind";
  EXPECT_EQ(RowsOf(loader), (Lines{"10001|3|new|", "10002|4|file|", "10003|5|mm|", "10000|0|M|"}));
  EXPECT_EQ(Printed(problems), Lines());
}

TEST(UnitLoader, TellsUnitsInCodeThatAreNotAllowed) {
  UnitLoader loader;
  ProblemList problems;
  EXPECT_FALSE(loader.Add(Unit(10001, 0, "m"), &problems));
  EXPECT_FALSE(loader.Add(Unit(-5, 1, "m"), &problems));
  EXPECT_FALSE(loader.Add(Unit(10001, 1, ""), nullptr));
  EXPECT_EQ(Printed(problems),
            (Lines{"error: A unit is dropped: the factor is not a number above 0 (unit \"10001\")",
                   "error: A unit is dropped: the code is not above 0 (unit \"-5\")"}));
  EXPECT_EQ(RowsOf(loader), Lines());
}

TEST(UnitLoader, ReadsFilesOfEachFormat) {
  const ScratchFolder folder;
  folder.Write(L"units \u0430.txt", "10001\t1/2\t\tm\tmetre\nx\n");
  folder.Write(L"four.txt", "10002 3 in inch\n");
  folder.Write(L"de-val.txt", "de\n10001\tM\tMeter\n");
  const std::string top = folder.Path().u8string();
  const auto path = [&top](const char* name) { return KelmoLibs::Localize::JoinNative(top, name); };
  UnitLoader loader;
  ProblemList problems;
  const std::string units = path("units \u0430.txt");
  EXPECT_TRUE(loader.AddFile(units, UnitFileFormat::kUnits, &problems));
  EXPECT_TRUE(loader.AddFile(path("four.txt"), UnitFileFormat::kFourFields, &problems));
  EXPECT_TRUE(loader.AddFile(path("de-val.txt"), UnitFileFormat::kNames, &problems));
  EXPECT_EQ(RowsOf(loader), (Lines{"10001|0.5|m|metre", "10002|3|in|inch"}));
  ASSERT_EQ(loader.Collected().Languages().size(), 1U);
  EXPECT_EQ(loader.Collected().Languages()[0].id, "de");
  EXPECT_EQ(loader.Collected().Languages()[0].names.at(10001).name, "Meter");
  EXPECT_EQ(Printed(problems),
            (Lines{units + ":2: error: A unit is dropped: a line has 5 or 6 fields with tabs "
                           "between them: code, factor, offset, symbol, name, difference; this one "
                           "has 1"}));
}

TEST(UnitLoader, TellsFilesThatCannotBeRead) {
  const ScratchFolder folder;
  const std::string top = folder.Path().u8string();
  const std::string missing = KelmoLibs::Localize::JoinNative(top, "none.txt");
  const std::string withZero = missing + '\0' + "x";
  const auto reasonOf = [](const std::string& path) {
    KelmoLibs::Localize::FileBytes bytes;
    return DescribeError(KelmoLibs::Localize::ReadFileAt(path, bytes));
  };
  UnitLoader loader;
  ProblemList problems;
  for (const std::string& path : {missing, top, withZero}) {
    EXPECT_FALSE(loader.AddFile(path, UnitFileFormat::kUnits, &problems)) << path;
    EXPECT_FALSE(loader.AddFile(path, UnitFileFormat::kNames, nullptr)) << path;
  }
  constexpr const char* kSentence = ": error: The file of units cannot be read: ";
  EXPECT_EQ(Printed(problems),
            (Lines{missing + kSentence + reasonOf(missing), top + kSentence + reasonOf(top),
                   missing + "\\x00x" + kSentence + "the path has a zero in it"}));
  EXPECT_EQ(RowsOf(loader), Lines());
  EXPECT_TRUE(loader.Collected().Languages().empty());
}

}  // namespace
