// The default unit table, which is embedded in the DLL and in the shared object: into the catalogue, and
// out to a file that users can look at.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "phyval/unit_catalogue.h"

namespace KelmoLibs::Localize {

/// Empties `catalogue` and fills it from the embedded table, which is first written to the file
/// C:\phyval.txt where `exportToFile` says so; that it cannot be written is not reported. Returns 0,
/// or -2 where the table is not found, -1 where it cannot be read. Whatever fails, also memory, the
/// earlier rows are gone.
std::int32_t LoadDefaultUnitTable(bool exportToFile, Phyval::UnitCatalogue& catalogue);

/// The text of `bytes`, UTF-16LE, up to the first zero or the end. Code unit for code unit: a unit
/// of a surrogate pair is not graphic and becomes a blank on every system. A byte-order mark is a
/// character like any other.
std::wstring DecodeUnitTable(std::string_view bytes);

/// Appends a row for each line of `text` with exactly four fields, code, factor, symbol and name;
/// passes over all others.
void ReadUnitTable(std::wstring_view text, Phyval::UnitCatalogue& catalogue);

/// The file that shows `text`: UTF-8, a line end behind it, and each LF as CR LF. A line that has a
/// CR already ends with two, which stays so.
std::string ExportedUnitTable(std::wstring_view text);

}  // namespace KelmoLibs::Localize
