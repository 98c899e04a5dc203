#include "lang/rules/library_units.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "lang/reading/unit_file.h"
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

bool AreNear(std::string_view shorter, std::string_view longer) noexcept {
  if (shorter.size() > longer.size()) {
    std::swap(shorter, longer);
  }
  const auto [first, second] =
      std::mismatch(shorter.begin(), shorter.end(), longer.begin(), longer.end());
  shorter.remove_prefix(static_cast<std::size_t>(first - shorter.begin()));
  longer.remove_prefix(static_cast<std::size_t>(second - longer.begin()));
  if (shorter.size() != longer.size()) {
    return longer.substr(1) == shorter;
  }
  const bool areExchanged = longer.size() > 1 && shorter[0] == longer[1] &&
                            shorter[1] == longer[0] && shorter.substr(2) == longer.substr(2);
  return areExchanged || shorter.substr(1) == longer.substr(1);
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
    if (unit.code != code && AreNear(digits, std::to_string(unit.code))) {
      if (nearest != 0) {
        return 0;
      }
      nearest = unit.code;
    }
  }
  return nearest;
}

}  // namespace KelmoLibs::Lang
