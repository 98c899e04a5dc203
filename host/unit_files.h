// The formats of files with units.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/problem_list.h"
#include "host/unit_collection.h"

namespace KelmoLibs::Host {

/// The values are those of kelmo.h.
enum class UnitFileFormat : std::int32_t { kUnits = 0, kFourFields = 1, kNames = 2 };

/// Reads units: five or six fields between tabs. Lines that begin with `#` are comments.
void ReadUnitFile(std::string_view bytes, std::string_view fileName, UnitCollection& units,
                  ProblemList* problems);

/// Reads units as the first library does: four words, and comments behind "//". What it drops is
/// dropped, and told.
void ReadFourFields(std::string_view bytes, std::string_view fileName, UnitCollection& units,
                    ProblemList* problems);

/// Reads the symbols and names of units in one language.
void ReadUnitNames(std::string_view bytes, std::string_view fileName, UnitCollection& units,
                   ProblemList* problems);

// All functions throw only std::bad_alloc; the lines that were read before count then.

}  // namespace KelmoLibs::Host
