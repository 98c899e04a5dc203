// The destructor of Double on Windows, where hosts import it; on Linux the header defines it.
#include "kelmo_localizer.h"

namespace KelmoLibs::Localize::Phyval {

// Hosts find null in the memory of a destroyed value. A compiler may drop a store into an object whose
// life ends, unless the store is volatile.
Double::~Double() { static_cast<ValueType* volatile&>(unit) = nullptr; }

}  // namespace KelmoLibs::Localize::Phyval
