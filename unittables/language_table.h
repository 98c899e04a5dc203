// The unit tables of languages: symbols and names of units as their speakers write them.
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

/// By the key of the language. Nothing is ever replaced or removed. The catalogue of units knows
/// nothing of it.
using LocalizedUnitTable = std::map<std::wstring, LocalizedUnits>;

/// Name of the file with the units of `language`, below the host's folder. The slash is part of it
/// on every system.
std::wstring LanguageUnitTableName(std::wstring_view language);

/// Name of the file for hosts that name no language. That it ends in another way stays so.
constexpr std::wstring_view kNeutralUnitTableName = L"lang-val.text";

/// Loads the language unit table `fileName` below `folder`. Problems go to `messages`. Returns
///    0 when the file is read; each of its lines that is no unit is listed;
///   -2 when there is no such file, or no header in it, whatever the reason: listed, nothing has
///      changed;
///   -1 when a failure cut the loading short behind the header: listed, what was read before stays.
/// Only a failure to make the path or to list those two leaves as an exception.
std::int32_t LoadLanguageUnitTable(std::wstring_view folder, std::wstring_view fileName,
                                   LocalizedUnitTable& table, ErrorList& messages);

}  // namespace KelmoLibs::Localize
