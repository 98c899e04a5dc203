// The units of the first library, without its code: nothing of its state comes into kelmo.
#pragma once

#include <optional>

#include "host/unit_collection.h"

namespace KelmoLibs::Host {

/// Those that it has when it is loaded. Names have no blank at their end.
UnitCollection BuiltInUnits();

/// Those of its unit table, which it has after its start. Nothing if the file of kelmo has no such
/// table; the build puts one into every file.
std::optional<UnitCollection> UnitsOfTable();

}  // namespace KelmoLibs::Host
