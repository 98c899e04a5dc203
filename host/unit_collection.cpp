#include "host/unit_collection.h"

#include <algorithm>
#include <utility>

namespace KelmoLibs::Host {

void UnitCollection::Put(UnitRow row) {
  const auto found = indexes_.find(row.code);
  if (found != indexes_.end()) {
    rows_[found->second] = std::move(row);
    return;
  }
  const std::int32_t code = row.code;
  rows_.push_back(std::move(row));
  try {
    indexes_.emplace(code, rows_.size() - 1);
  } catch (...) {
    rows_.pop_back();
    throw;
  }
}

LanguageUnits& UnitCollection::NamesIn(std::string_view id) {
  const auto found = std::find_if(languages_.begin(), languages_.end(),
                                  [id](const LanguageUnits& units) { return units.id == id; });
  if (found != languages_.end()) {
    return *found;
  }
  languages_.push_back({std::string(id), {}});
  return languages_.back();
}

}  // namespace KelmoLibs::Host
