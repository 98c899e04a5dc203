// Advice to the operating system about memory.
#pragma once

#include <cstddef>

namespace KelmoLibs::Localize {

/// Tells the system that the program is about to write all `bytes` at `memory`. On Linux, the
/// system may then provide all pages at once, and large pages, which makes a large load faster.
/// Does nothing on Windows. Only a hint: a failure is ignored.
void PrefaultPages(void* memory, std::size_t bytes) noexcept;

}  // namespace KelmoLibs::Localize
