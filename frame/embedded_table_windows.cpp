#include <windows.h>

#include "frame/platform.h"

namespace KelmoLibs::Localize {

// By the library's fixed name and not by the address of its own code, and without a look at what
// comes back: a host that renames the file has no table, unless it carries one itself. The
// reference that each call takes stays with it, and hosts that unload the library count on that.
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
