#include <windows.h>

#include <cwctype>
#include <stdexcept>
#include <vector>

#include "tests/support/heap_bytes_windows.h"
#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = true;
const bool librarySharesTheGlobalLocale = false;
const bool instrumented = false;

bool SystemSaysGraphicOrBlank(wchar_t character) {
  return std::iswgraph(character) != 0 || std::iswblank(character) != 0;
}

namespace {

// Without the heaps, which may grow by far more than their allocated bytes.
std::size_t MappedBytes() {
  const std::set<const void*> heaps = HeapRegions();
  std::size_t bytes = 0;
  MEMORY_BASIC_INFORMATION region = {};
  const char* address = nullptr;
  while (::VirtualQuery(address, &region, sizeof(region)) != 0) {
    if (region.State != MEM_FREE && heaps.count(region.AllocationBase) == 0) {
      bytes += region.RegionSize;
    }
    address = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
  }
  return bytes;
}

DWORD WINAPI Run(void* work) {
  (*static_cast<const std::function<void()>*>(work))();
  return 0;
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
  const std::optional<std::size_t> heapBytes = HeapBytes();
  if (!heapBytes) {
    return std::nullopt;
  }
  footprint.heapBytes = *heapBytes;
  return footprint;
}

bool ReturnsWithin(std::chrono::milliseconds time, const std::function<void()>& work) {
  std::function<void()> copy = work;
  HANDLE thread = ::CreateThread(nullptr, 0, Run, &copy, 0, nullptr);
  if (thread == nullptr) {
    throw std::runtime_error("a thread could not be created");
  }
  const bool returns =
      ::WaitForSingleObject(thread, static_cast<DWORD>(time.count())) == WAIT_OBJECT_0;
  if (!returns) {
    ::TerminateThread(thread, 1);
    ::WaitForSingleObject(thread, INFINITE);
  }
  ::CloseHandle(thread);
  return returns;
}

void TurnOffErrorDialogs() {
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}
