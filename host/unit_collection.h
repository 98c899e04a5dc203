// Units and their names in languages, as a loader collects them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/unit_row.h"

namespace KelmoLibs::Host {

struct UnitNames {
  std::string symbol;
  std::string name;
};

/// The symbols and names of units in one language, by the code of the unit; of kinds, too.
struct LanguageUnits {
  std::string id;
  std::map<std::int32_t, UnitNames> names;
};

/// All functions throw only std::bad_alloc; what was collected before stays then.
class UnitCollection {
 public:
  /// Adds a row, or replaces that with its code.
  void Put(UnitRow row);

  /// The names in the language with that id, which is added if it is new.
  LanguageUnits& NamesIn(std::string_view id);

  /// In the order of their first adding.
  const std::vector<UnitRow>& Rows() const noexcept { return rows_; }
  const std::vector<LanguageUnits>& Languages() const noexcept { return languages_; }

 private:
  std::vector<UnitRow> rows_;
  std::map<std::int32_t, std::size_t> indexes_;  // in rows_, by code
  std::vector<LanguageUnits> languages_;
};

}  // namespace KelmoLibs::Host
