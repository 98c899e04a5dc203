#include <malloc.h>
#include <pthread.h>
#include <unistd.h>

#include <fstream>

#include "tests/support/free_descriptor.h"
#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = false;
const bool librarySharesTheGlobalLocale = true;

std::optional<Footprint> MeasureFootprint() {
#if defined(KELMO_INSTRUMENTED)
  return std::nullopt;
#else
  Footprint footprint = {};
  std::ifstream pages("/proc/self/statm");
  if (!(pages >> footprint.mappedBytes)) {
    return std::nullopt;
  }
  pages.close();
  footprint.mappedBytes *= static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));

  footprint.nextHandle = static_cast<std::uintptr_t>(FreeDescriptor());

  pthread_key_t key = 0;
  ::pthread_key_create(&key, nullptr);
  ::pthread_key_delete(key);
  footprint.nextThreadSlot = key;

  const struct mallinfo2 heap = ::mallinfo2();
  footprint.heapBytes = heap.uordblks + heap.hblkhd;
  return footprint;
#endif
}

void TurnOffErrorDialogs() {}
