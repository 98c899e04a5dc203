// The default unit table, which is embedded in the file of the library: reads it into the
// catalogue, and writes it to a file for users.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "phyval/unit_catalogue.h"

namespace KelmoLibs::Localize {

/// Empties `catalogue` and reads the embedded table into it. If `exportToFile` is true, first
/// writes the table to the file C:\phyval.txt; a failure to write is not reported. Returns 0, -1 if
/// the table cannot be read, or -2 if it is not found. The earlier rows are removed in all cases,
/// also if std::bad_alloc is thrown.
std::int32_t LoadDefaultUnitTable(bool exportToFile, Phyval::UnitCatalogue& catalogue);

/// The text of `bytes`, which are UTF-16LE, up to the first zero or the end. Each code unit becomes
/// one wchar_t, so that half a surrogate pair is not graphic, and becomes a blank, on every system.
/// A byte-order mark is a character like any other.
std::wstring DecodeUnitTable(std::string_view bytes);

/// Appends a row for each line of `text` that has exactly four fields: code, factor, symbol and
/// name. Ignores all other lines.
void ReadUnitTable(std::wstring_view text, Phyval::UnitCatalogue& catalogue);

/// The bytes of the exported file: `text` as UTF-8, CR LF in place of each LF, and one more CR LF
/// at the end. A line that already ends with a CR gets a second one, which must stay so.
std::string ExportedUnitTable(std::wstring_view text);

}  // namespace KelmoLibs::Localize
