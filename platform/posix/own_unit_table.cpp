#include "platform/own_unit_table.h"

#include "platform/embedded_table.h"

namespace KelmoLibs::Localize {

// On this system the table is part of the data of each library.
std::string_view FindOwnUnitTable() noexcept { return FindEmbeddedUnitTable().bytes; }

}  // namespace KelmoLibs::Localize
