#include "lang/rules/library_units.h"

#include <algorithm>
#include <cstddef>

#include "lang/reading/unit_file.h"
#include "lang/rules/edit_distance.h"
#include "lang/texts/embedded_texts.h"
#include "lang/unicode/utf8_from_wide.h"
#include "phyval/unit_catalogue.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNameField = 3;

// A blank at the end is removed.
std::string NameOf(const std::wstring& name) {
  std::string utf8 = Utf8FromWide(name);
  utf8.resize(utf8.find_last_not_of(' ') + 1);
  return utf8;
}

std::vector<LibraryUnit> CollectUnits() {
  std::vector<LibraryUnit> units;
  for (const auto& row : Localize::Phyval::BuiltInUnits()) {
    units.push_back({row.code, NameOf(row.name)});
  }
  for (const DefaultUnitLine& line : ReadDefaultUnitLines(EmbeddedUnitTable())) {
    if (!line.fields.empty()) {
      units.push_back({line.code, NameOf(line.fields[kNameField])});
    }
  }
  std::stable_sort(
      units.begin(), units.end(),
      [](const LibraryUnit& left, const LibraryUnit& right) { return left.code < right.code; });
  const auto isSameCode = [](const LibraryUnit& left, const LibraryUnit& right) {
    return left.code == right.code;
  };
  units.erase(std::unique(units.begin(), units.end(), isSameCode), units.end());
  return units;
}

}  // namespace

const std::vector<LibraryUnit>& LibraryUnits() {
  static const std::vector<LibraryUnit> units = CollectUnits();
  return units;
}

std::int32_t NearestLibraryCode(std::int32_t code) {
  const std::string digits = std::to_string(code);
  std::int32_t nearest = 0;
  for (const LibraryUnit& unit : LibraryUnits()) {
    if (unit.code != code && IsOneMistake(digits, std::to_string(unit.code))) {
      if (nearest != 0) {
        return 0;
      }
      nearest = unit.code;
    }
  }
  return nearest;
}

}  // namespace KelmoLibs::Lang
