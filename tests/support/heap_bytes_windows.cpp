// HeapWalk shows each allocated block. With Wine 10 it shows groups of small blocks instead, and
// not whether a block in a group is allocated. There the calls of the C runtime are counted, which
// the library shares with the program.
#include "tests/support/heap_bytes_windows.h"

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

template <class Visit>
void WalkTheHeaps(Visit visit) {
  std::vector<HANDLE> heaps(1000);
  heaps.resize(::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  for (HANDLE heap : heaps) {
    PROCESS_HEAP_ENTRY entry = {};
    while (::HeapWalk(heap, &entry) != FALSE) {
      visit(entry);
    }
  }
}

std::size_t WalkedBytes() {
  std::size_t bytes = 0;
  WalkTheHeaps([&](const PROCESS_HEAP_ENTRY& entry) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
      bytes += entry.cbData;
    }
  });
  return bytes;
}

bool WalkShowsEachBlock() {
  constexpr std::size_t kSize = 40;
  std::array<void*, 100> blocks = {};
  const std::size_t before = WalkedBytes();
  for (void*& block : blocks) {
    block = ::HeapAlloc(::GetProcessHeap(), 0, kSize);
  }
  const std::size_t after = WalkedBytes();
  for (void* block : blocks) {
    ::HeapFree(::GetProcessHeap(), 0, block);
  }
  return after == before + blocks.size() * kSize;
}

// ---- Bytes that the C runtime has allocated and not freed

std::atomic<std::size_t> counted{0};

LPVOID WINAPI Allocate(HANDLE heap, DWORD flags, SIZE_T size) {
  void* const block = ::HeapAlloc(heap, flags, size);
  if (block != nullptr) {
    counted += size;
  }
  return block;
}

LPVOID WINAPI Reallocate(HANDLE heap, DWORD flags, LPVOID block, SIZE_T size) {
  const SIZE_T before = ::HeapSize(heap, 0, block);
  void* const moved = ::HeapReAlloc(heap, flags, block, size);
  if (moved != nullptr) {
    counted += size - before;
  }
  return moved;
}

BOOL WINAPI Free(HANDLE heap, DWORD flags, LPVOID block) {
  const SIZE_T size = block != nullptr ? ::HeapSize(heap, 0, block) : 0;
  const BOOL freed = ::HeapFree(heap, flags, block);
  if (freed != FALSE) {
    counted -= size;
  }
  return freed;
}

// Replaces the imported function `name` of `module` by `function`.
template <class Function>
bool ReplaceImport(HMODULE module, const char* name, Function* function) {
  auto* const base = reinterpret_cast<std::byte*>(module);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& imports =
      headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (const auto* from =
           reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
       from->Name != 0; ++from) {
    const auto* wanted = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
    auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(base + from->FirstThunk);
    for (; wanted->u1.AddressOfData != 0; ++wanted, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(wanted->u1.Ordinal)) {
        continue;
      }
      const auto* const import =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + wanted->u1.AddressOfData);
      DWORD protection = 0;
      if (std::strcmp(reinterpret_cast<const char*>(import->Name), name) == 0 &&
          ::VirtualProtect(address, sizeof(*address), PAGE_READWRITE, &protection) != FALSE) {
        address->u1.Function = reinterpret_cast<std::uintptr_t>(function);
        ::VirtualProtect(address, sizeof(*address), protection, &protection);
        return true;
      }
    }
  }
  return false;
}

// Starts with the program, so that all blocks that are freed later have been counted.
const bool counting = [] {
  const HMODULE runtime = ::GetModuleHandleW(L"msvcrt.dll");
  return runtime != nullptr && ReplaceImport(runtime, "HeapAlloc", &Allocate) &&
         ReplaceImport(runtime, "HeapReAlloc", &Reallocate) &&
         ReplaceImport(runtime, "HeapFree", &Free);
}();

}  // namespace

std::optional<std::size_t> HeapBytes() {
  static const bool exact = WalkShowsEachBlock();
  if (exact) {
    return WalkedBytes();
  }
  return counting ? std::optional<std::size_t>(counted) : std::nullopt;
}

std::set<const void*> HeapRegions() {
  std::set<const void*> regions;
  WalkTheHeaps([&](const PROCESS_HEAP_ENTRY& entry) {
    if ((entry.wFlags & PROCESS_HEAP_REGION) != 0) {
      regions.insert(entry.lpData);
    }
  });
  return regions;
}
