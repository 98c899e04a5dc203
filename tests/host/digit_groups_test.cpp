#include "text/digit_groups.h"

#include <gtest/gtest.h>

#include <string_view>

namespace KelmoLibs::Localize {
namespace {

TEST(DigitGroups, AreReadFromBytes) {
  struct Row {
    const char* name;
    std::string_view list;
    DigitGroups groups;
  };
  const Row rows[] = {
      {"no groups", "", {0, 0}},
      {"one size repeats", "\3", {3, 3}},
      {"equal sizes", "\3\3", {3, 3}},
      {"the second size repeats", "\3\2", {3, 2}},
      {"only one group", "\3\177", {3, kNoFurtherGroup}},
      {"end before the first group", "\177", {0, 0}},
      {"negative size", "\377", {0, 0}},
      {"negative second size", "\3\377", {3, kNoFurtherGroup}},
  };
  for (const Row& row : rows) {
    const DigitGroups groups = GroupsOfBytes(row.list);
    EXPECT_EQ(groups.first, row.groups.first) << row.name;
    EXPECT_EQ(groups.further, row.groups.further) << row.name;
  }
}

TEST(DigitGroups, AreReadFromNumbers) {
  struct Row {
    const char* name;
    std::wstring_view list;
    DigitGroups groups;
  };
  const Row rows[] = {
      {"empty list", L"", {0, 0}},
      {"no groups", L"0", {0, 0}},
      {"no groups, repeated", L"0;0", {0, 0}},
      {"groups of three", L"3;0", {3, 3}},
      {"only one group", L"3", {3, kNoFurtherGroup}},
      {"only one group, told otherwise", L"3;0;0", {3, kNoFurtherGroup}},
      {"three, then two", L"3;2;0", {3, 2}},
      {"groups of four", L"4;0", {4, 4}},
      {"letter", L"x;0", {0, 0}},
      {"sign", L"-;0", {0, 0}},
      {"two digits", L"12;0", {0, 0}},
      {"no number", L";3", {0, 0}},
      {"letter behind the number", L"3;x", {3, 3}},
  };
  for (const Row& row : rows) {
    const DigitGroups groups = GroupsOfNumbers(row.list);
    EXPECT_EQ(groups.first, row.groups.first) << row.name;
    EXPECT_EQ(groups.further, row.groups.further) << row.name;
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
