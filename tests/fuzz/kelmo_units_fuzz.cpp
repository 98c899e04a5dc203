// Reads any bytes as a file of units. The first byte says the format: units, four fields, names. What was
// read stays in the set, or is told; each unit is found by its code and by its texts, and converts to each
// unit of its kind.
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "host/quantity.h"
#include "host/unit_files.h"
#include "host/unit_set.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "text/utf8_characters.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Localize::IsUtf8;

void Require(bool holds, const char* what) {
  if (!holds) {
    throw Disagreement(what);
  }
}

// Units that are there before, so that names belong to some and codes are repeated.
constexpr std::string_view kBefore =
    "10001\t1\t\tm\tmetre\n18002\t1\t273.15\tC\tCelsius\t19002\n19002\t1\t\tC\tCelsius\n";

void Read(std::string_view bytes, UnitCollection& units, ProblemList& problems) {
  const auto format =
      bytes.empty() ? 0U : static_cast<unsigned>(static_cast<unsigned char>(bytes.front())) % 3U;
  const std::string_view content = bytes.substr(bytes.empty() ? 0 : 1);
  switch (format) {
    case 0:
      return ReadUnitFile(content, "file", units, &problems);
    case 1:
      return ReadFourFields(content, "file", units, &problems);
    default:
      return ReadUnitNames(content, "file", units, &problems);
  }
}

void CheckProblems(const ProblemList& problems) {
  for (const Problem& problem : problems.All()) {
    Require(IsUtf8(Print(problem)), "a problem in UTF-8");
    Require(Print(problem).find('\n') == std::string::npos, "a problem in one line");
  }
}

// Other units may have the same text.
void CheckText(const UnitSet& units, const UnitRow& unit, std::string_view text,
               const LanguageChain& languages) {
  if (text.empty()) {
    return;
  }
  const FoundUnits found = units.FindText(text, KindOf(unit.code), languages);
  Require(
      found.result == FoundUnits::Result::kFound || found.result == FoundUnits::Result::kSeveral,
      "a unit is found by its text");
  for (const UnitRow* const row : found.units) {
    Require(KindOf(row->code) == KindOf(unit.code), "of the wanted kind");
  }
}

void CheckUnit(const UnitSet& units, const UnitRow& unit, const LanguageChain& languages) {
  Require(units.Find(unit.code) == &unit, "a unit is found by its code");
  Require(!unit.symbol.empty() && IsUtf8(unit.symbol) && IsUtf8(unit.name), "texts of a unit");
  Require(unit.factor.high == 0 || (std::isnormal(unit.factor.high) && unit.factor.high > 0),
          "a factor");
  CheckText(units, unit, unit.symbol, {});
  CheckText(units, unit, unit.name, {});
  const UnitLabel label = units.LabelOf(unit, languages);
  CheckText(units, unit, label.symbol, languages);
  CheckText(units, unit, label.name, languages);
  if (unit.IsPoint()) {
    const UnitRow* const difference = units.Find(unit.difference);
    Require(difference != nullptr && !difference->IsPoint() &&
                difference->factor.high == unit.factor.high,
            "a unit of differences");
  }
  for (const UnitRow* const other : units.UnitsOf(KindOf(unit.code))) {
    Require(other->IsPoint() == unit.IsPoint(), "points, or none, in a kind");
    double number = 2;
    Require(ConvertNumbers(units, unit.code, other->code, &number, 1, &number) == KELMO_OK,
            "a conversion");
    const double plain =
        (unit.factor.high * 2 + (unit.offset.high - other->offset.high)) / other->factor.high;
    const double largest =
        (unit.factor.high * 2 + std::abs(unit.offset.high) + std::abs(other->offset.high)) /
        other->factor.high;
    Require(other == &unit
                ? number == 2
                : !std::isfinite(largest) || std::abs(number - plain) <= largest * 1e-14 + 1e-300,
            "the result of a conversion");
  }
}

}  // namespace

void CheckWith(std::string_view bytes) {
  UnitCollection collection;
  ReadUnitFile(kBefore, "before", collection, nullptr);
  ProblemList problems;
  Read(bytes, collection, problems);
  CheckProblems(problems);

  UnitCollection again;
  ReadUnitFile(kBefore, "before", again, nullptr);
  ProblemList told;
  Read(bytes, again, told);
  Require(told.All().size() == problems.All().size(), "the same problems again");

  LanguageChain languages;
  for (const LanguageUnits& language : collection.Languages()) {
    languages.push_back(language.id);
  }
  ProblemList sealing;
  const UnitSet units(collection, &sealing);
  CheckProblems(sealing);
  std::size_t count = 0;
  for (const UnitSet::Kind& kind : units.Kinds()) {
    Require(!kind.units.empty() && units.FindKind(kind.number) == &kind, "a kind");
    count += kind.units.size();
  }
  Require(count == units.UnitsOf(0).size(), "each unit has a kind");
  for (const UnitRow* const unit : units.UnitsOf(0)) {
    CheckUnit(units, *unit, languages);
  }
}
