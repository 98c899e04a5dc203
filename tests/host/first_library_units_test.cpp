#include "host/first_library_units.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "phyval/unit_catalogue.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/read_file.h"
#include "unittables/default_table.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Localize::Phyval::UnitCatalogue;

// The catalogue as kelmo has it: one code for a kind, and names without blanks at their ends.
std::vector<std::string> RowsOf(const UnitCatalogue& catalogue) {
  std::vector<std::string> rows;
  for (const auto& row : catalogue) {
    const std::wstring name = row.name.substr(0, row.name.find_last_not_of(L' ') + 1);
    rows.push_back(std::to_string(NormalCode(row.code)) + '|' + std::to_string(row.factor) + '|' +
                   EncodeUtf8(row.symbol) + '|' + EncodeUtf8(name));
  }
  return rows;
}

std::vector<std::string> RowsOf(const UnitCollection& units) {
  std::vector<std::string> rows;
  for (const UnitRow& row : units.Rows()) {
    rows.push_back(std::to_string(row.code) + '|' + std::to_string(row.factor.high) + '|' +
                   row.symbol + '|' + row.name);
  }
  return rows;
}

TEST(FirstLibraryUnits, AreThoseOfItsCatalogue) {
  EXPECT_EQ(RowsOf(BuiltInUnits()), RowsOf(KelmoLibs::Localize::Phyval::BuiltInUnits()));
}

TEST(FirstLibraryUnits, AreThoseOfItsTable) {
  UnitCatalogue catalogue;
  const std::string table = ReadProjectFile("resources/default_unit_table.txt");
  KelmoLibs::Localize::ReadUnitTable(KelmoLibs::Localize::DecodeUnitTable(table), catalogue);
  const auto units = UnitsOfTable();
  ASSERT_TRUE(units.has_value());
  EXPECT_EQ(RowsOf(*units), RowsOf(catalogue));
}

}  // namespace
