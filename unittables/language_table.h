// Unit tables of languages: the symbols and names of the units in one language.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "frame/error_list.h"

namespace KelmoLibs::Localize {

struct LocalizedUnit {
  std::wstring symbol;
  std::wstring name;
};

using LocalizedUnits = std::map<std::int32_t, LocalizedUnit>;  // by the code of the unit

/// Units by the key of the language. An entry is never replaced or removed. The catalogue of units
/// does not use them.
using LocalizedUnitTable = std::map<std::wstring, LocalizedUnits>;

/// Name of the file with the units of `language`, relative to the host's folder. It contains a
/// slash on every system.
std::wstring LanguageUnitTableName(std::wstring_view language);

/// Name of the file for hosts that name no language. The extension differs from the other files,
/// and must stay so.
constexpr std::wstring_view kNeutralUnitTableName = L"lang-val.text";

/// Loads the language unit table `fileName` from `folder`. Returns
///    0 if the file was read: a message is appended for each line that is not a unit;
///   -2 if there is no such file, or no header in it, for any reason: a message is appended,
///      nothing else changes;
///   -1 if the loading failed after the header: a message is appended, and the units that were read
///      before stay.
/// Throws only if the path cannot be made, or one of the last two messages cannot be appended.
std::int32_t LoadLanguageUnitTable(std::wstring_view folder, std::wstring_view fileName,
                                   LocalizedUnitTable& table, ErrorList& messages);

}  // namespace KelmoLibs::Localize
