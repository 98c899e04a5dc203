#include "platform/memory.h"

#include <sys/mman.h>

#include <cstdint>

namespace KelmoLibs::Localize {
namespace {

// Gives `advice` for the whole pages of `pageBytes` inside the memory. An older system may not know
// the advice: it then refuses it, which does no harm.
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

void PrefaultPages(void* memory, std::size_t bytes) noexcept {
  constexpr std::size_t kMinBytes = std::size_t{32} * 1024;  // less is not worth a system call
  constexpr std::uintptr_t kLargePage = std::uintptr_t{2} * 1024 * 1024;
  constexpr std::uintptr_t kPage = 4096;
  if (bytes >= kMinBytes) {
    Advise(memory, bytes, kLargePage, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE
    Advise(memory, bytes, kPage, MADV_POPULATE_WRITE);
#endif
  }
}

}  // namespace KelmoLibs::Localize
