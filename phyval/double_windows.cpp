// The destructor of Double on Windows, where hosts import it. On Linux the header defines it.
#include "kelmo_localizer.h"

namespace KelmoLibs::Localize::Phyval {

// Hosts depend on a null unit in the memory of a destroyed value. A compiler may remove a store
// into an object at the end of its lifetime, unless the store is volatile.
Double::~Double() { static_cast<ValueType* volatile&>(unit) = nullptr; }

}  // namespace KelmoLibs::Localize::Phyval
