#include <sys/mman.h>

#include <cstdint>

#include "platform/files.h"

namespace KelmoLibs::Localize {
namespace {

// Advice on the whole pages of `pageBytes` in the memory, if it has any. What the system does not know, an
// older one perhaps, it refuses, and nothing is lost.
void Advise(void* memory, std::size_t bytes, std::uintptr_t pageBytes, int advice) noexcept {
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t first = (address + pageBytes - 1) / pageBytes * pageBytes;
  const std::uintptr_t end = (address + bytes) / pageBytes * pageBytes;
  if (first < end) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the first whole page
    ::madvise(reinterpret_cast<void*>(first), end - first, advice);
  }
}

}  // namespace

void PrepareMemory(void* memory, std::size_t bytes) noexcept {
  constexpr std::size_t kWorthACall = std::size_t{32} * 1024;
  constexpr std::uintptr_t kLargePage = std::uintptr_t{2} * 1024 * 1024;
  constexpr std::uintptr_t kPage = 4096;
  if (bytes >= kWorthACall) {
    Advise(memory, bytes, kLargePage, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE
    Advise(memory, bytes, kPage, MADV_POPULATE_WRITE);
#endif
  }
}

}  // namespace KelmoLibs::Localize
