#include <windows.h>

#include <vector>

#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = true;

std::optional<std::size_t> HeapBytesInUse() {
  std::vector<HANDLE> heaps(1000);
  const DWORD count = ::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  if (count == 0 || count > heaps.size()) {
    return std::nullopt;
  }
  heaps.resize(count);
  std::size_t bytes = 0;
  for (HANDLE heap : heaps) {
    PROCESS_HEAP_ENTRY entry = {};
    while (::HeapWalk(heap, &entry) != FALSE) {
      if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
        bytes += entry.cbData;
      }
    }
  }
  return bytes;
}

std::uintptr_t NextHandle() {
  HANDLE handle = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
  ::CloseHandle(handle);
  return reinterpret_cast<std::uintptr_t>(handle);
}

void TurnOffErrorDialogs() {
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}
