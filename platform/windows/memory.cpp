#include "platform/files.h"

namespace KelmoLibs::Localize {

// Large pages are a privilege there, and the others come one by one.
void PrepareMemory(void* /*memory*/, std::size_t /*bytes*/) noexcept {}

}  // namespace KelmoLibs::Localize
