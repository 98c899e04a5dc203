#include "platform/embedded_table.h"

// Defined in resources/default_unit_table_posix.S.
extern "C" {
extern const char kelmoUnitTable[];
extern const char kelmoUnitTableEnd[];
}

namespace KelmoLibs::Localize {

EmbeddedTable FindEmbeddedUnitTable() noexcept {
  const auto size = static_cast<std::size_t>(kelmoUnitTableEnd - kelmoUnitTable);
  return {EmbeddedTable::Status::kFound, {kelmoUnitTable, size}};
}

}  // namespace KelmoLibs::Localize
