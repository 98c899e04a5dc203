// The default unit table inside the file that this code is part of.
#pragma once

#include <string_view>

namespace KelmoLibs::Localize {

/// The bytes of the table, in UTF-16LE; empty if the file has none. They are valid until the library is
/// unloaded. The file is found by the address of this code, so it may have any name; nothing is
/// loaded. FindEmbeddedUnitTable (embedded_table.h) finds that of the first library instead.
std::string_view FindOwnUnitTable() noexcept;

}  // namespace KelmoLibs::Localize
