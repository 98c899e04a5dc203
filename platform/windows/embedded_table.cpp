#include "platform/embedded_table.h"

#include <windows.h>

namespace KelmoLibs::Localize {

// The module is found by the library's fixed name. If there is none, the null handle stands for the
// host's own file. So a host that renames the library has no table, unless its own file carries
// one. An address inside the library would find the table under every name, but hosts may depend on
// this behaviour. The reference that each call takes is never released: hosts that unload the
// library depend on that, too.
EmbeddedTable FindEmbeddedUnitTable() noexcept {
  HMODULE library = ::LoadLibraryA("kelmo_Mestrel_Localizer.dll");
  // As in resources/default_unit_table.rc. NOLINTNEXTLINE(performance-no-int-to-ptr)
  HRSRC resource = ::FindResourceW(library, MAKEINTRESOURCEW(102), MAKEINTRESOURCEW(10));
  if (resource == nullptr) {
    return {EmbeddedTable::Status::kMissing, {}};
  }
  HGLOBAL loaded = ::LoadResource(library, resource);
  if (loaded == nullptr) {
    return {EmbeddedTable::Status::kUnreadable, {}};
  }
  return {EmbeddedTable::Status::kFound,
          {static_cast<const char*>(::LockResource(loaded)), ::SizeofResource(library, resource)}};
}

}  // namespace KelmoLibs::Localize
