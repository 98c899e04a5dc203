// The default unit table, which is embedded in the file of the library.
#pragma once

#include <cstdint>
#include <string_view>

namespace KelmoLibs::Localize {

struct EmbeddedTable {
  enum class Status : std::int32_t { kFound = 0, kUnreadable = -1, kMissing = -2 };

  Status status;
  std::string_view bytes;  // UTF-16LE; valid until the library is unloaded; empty unless found
};

/// On Windows, the table is a resource of the module with the name "kelmo_Mestrel_Localizer.dll".
/// Each call loads this module once more (LoadLibrary) and never releases it. If Windows finds no
/// such file, the resources of the host's own file are searched.
///
/// On Linux, the table is part of the library's data: it is always found, and no file is opened.
EmbeddedTable FindEmbeddedUnitTable() noexcept;

}  // namespace KelmoLibs::Localize
