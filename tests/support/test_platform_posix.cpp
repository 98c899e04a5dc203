#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = false;

std::optional<std::size_t> HeapBytesInUse() {
#if defined(KELMO_INSTRUMENTED)  // its runtime keeps memory of its own
  return std::nullopt;
#else
  const struct mallinfo2 heap = ::mallinfo2();
  return heap.uordblks + heap.hblkhd;
#endif
}

std::uintptr_t NextHandle() {
  const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
  ::close(descriptor);
  return static_cast<std::uintptr_t>(descriptor);
}

void TurnOffErrorDialogs() {}
