#include <windows.h>

#include <cwctype>
#include <vector>

#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = true;
const bool librarySharesTheGlobalLocale = false;
const bool instrumented = false;

bool SystemTakesForGraphicOrBlank(wchar_t character) {
  return std::iswgraph(character) != 0 || std::iswblank(character) != 0;
}

namespace {

std::size_t HeapBytes() {
  std::vector<HANDLE> heaps(1000);
  heaps.resize(::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
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

std::size_t MappedBytes() {
  std::size_t bytes = 0;
  MEMORY_BASIC_INFORMATION region = {};
  const char* address = nullptr;
  while (::VirtualQuery(address, &region, sizeof(region)) != 0) {
    if (region.State != MEM_FREE) {
      bytes += region.RegionSize;
    }
    address = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
  }
  return bytes;
}

}  // namespace

std::uint64_t AvailableMemory() {
  MEMORYSTATUSEX memory = {};
  memory.dwLength = sizeof(memory);
  return ::GlobalMemoryStatusEx(&memory) != FALSE ? memory.ullAvailPhys : 0;
}

std::uintptr_t NextHandle() {
  HANDLE handle = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
  ::CloseHandle(handle);
  return reinterpret_cast<std::uintptr_t>(handle);
}

std::optional<Footprint> MeasureFootprint() {
  Footprint footprint = {};
  footprint.mappedBytes = MappedBytes();
  footprint.nextHandle = NextHandle();
  footprint.nextThreadSlot = ::TlsAlloc();
  ::TlsFree(static_cast<DWORD>(footprint.nextThreadSlot));
  footprint.heapBytes = HeapBytes();
  return footprint;
}

void TurnOffErrorDialogs() {
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}
