// first_library_units_test.cpp compares both with the rows of the first library.
#include "host/first_library_units.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "host/unit_files.h"
#include "platform/own_unit_table.h"
#include "text/utf8.h"

namespace KelmoLibs::Host {
namespace {

struct BuiltInUnit {
  std::int32_t code;
  double factor;
  const char* symbol;
  const char* name;
};

// Hosts depend on these rows: phyval/unit_catalogue.cpp says why an inch has 0.0273 m.
constexpr BuiltInUnit kBuiltInUnits[] = {
    {10000, 0.0, "L", "length"},
    {10001, 1.0, "\u043C", "meter"},  // Cyrillic em, not Latin m
    {10002, 0.0273, "in", "inch"},
    {20000, 0.0, "S", "area"},
    {20001, 1.0, "m2", "square meter"},  // Latin m
    {30001, 1.0, "%", "koefficient"},
    {40000, 0.0, "angl", "plane angle"},
    {40001, 1.0, "\u00B0", "degree"},
    {40002, 57.29577951308232, "rad", "radian"},
};

// UTF-16LE to UTF-8. The table has no surrogates. (unittables/default_table.h reads it for the first
// library, and comes with all that loading a table needs.)
std::string Utf8Of(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const unsigned low = static_cast<unsigned char>(bytes[i]);
    const unsigned high = static_cast<unsigned char>(bytes[i + 1]);
    Localize::AppendUtf8(static_cast<char32_t>(low | (high << 8U)), text);
  }
  return text;
}

}  // namespace

UnitCollection BuiltInUnits() {
  UnitCollection units;
  for (const BuiltInUnit& given : kBuiltInUnits) {
    UnitRow row;
    row.code = given.code;
    row.factor.high = given.factor;
    row.symbol = given.symbol;
    row.name = given.name;
    units.Put(std::move(row));
  }
  return units;
}

std::optional<UnitCollection> UnitsOfTable() {
  const std::string_view table = Localize::FindOwnUnitTable();
  // not covered, true of `table.empty()`: the build puts a table into each file
  if (table.empty()) {
    // not covered: the same
    return std::nullopt;
  }
  UnitCollection units;
  ReadFourFields(Utf8Of(table), {}, units, nullptr);
  return units;
}

}  // namespace KelmoLibs::Host
