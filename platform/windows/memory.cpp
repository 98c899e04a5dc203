#include "platform/memory.h"

namespace KelmoLibs::Localize {

// Large pages need a privilege there, and there is no call that maps the others at once.
void PrefaultPages(void* /*memory*/, std::size_t /*bytes*/) noexcept {}

}  // namespace KelmoLibs::Localize
