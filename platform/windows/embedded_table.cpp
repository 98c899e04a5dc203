#include <windows.h>

#include "platform/files.h"

namespace KelmoLibs::Localize {

// The module is looked for under the library's fixed name, and a null is passed on: then the host's own
// file is searched. So a host that renames the library has no table, unless it carries one itself; an
// address inside the library would find the table under any name. The reference that each call takes is
// kept, and hosts that unload the library count on that.
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
