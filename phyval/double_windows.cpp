// The destructor of Double on Windows, where hosts import it; on Linux the header defines it.
#include "kelmo_localizer.h"

namespace KelmoLibs::Localize::Phyval {

// Hosts find null in the memory of a value that has gone. A compiler may drop what is stored into
// an object at the end of its life, unless the store is volatile.
Double::~Double() { static_cast<ValueType* volatile&>(unit) = nullptr; }

}  // namespace KelmoLibs::Localize::Phyval
