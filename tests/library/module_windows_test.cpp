// The library's module: its reference count, which hosts see only on Windows; thread notifications,
// which it disables; and the runtime linked into it, which has its own exceptions.

#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>
#include <winternl.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "tests/support/exported_table.h"
#include "tests/support/host_test.h"
#include "tests/support/test_platform.h"

namespace {

TEST(Module, GetsOneReferencePerStart) {
  const ScratchFolder folder;
  folder.Write(L"en.txt", "en\nkey text\nkey again\n");
  for (const int starts : {1, 2, 7}) {
    SCOPED_TRACE(starts);
    {
      const LoadedLibrary library;
      const LibraryExports host = ExportsOf(library);
      ASSERT_EQ(host.LoadDictionary(folder.HostPath().c_str(), L"en.txt"), 1);
      const wchar_t* const text = host.LANG(L"key");
      for (int i = 0; i < starts; ++i) {
        const int result = i % 3 == 0   ? host.Init(L"no such folder", L"ru")
                           : i % 3 == 1 ? host.Init0(L"no such folder")
                                        : host.ExportPhyVal();
        EXPECT_EQ(result, 0);
      }
      // One reference for the load, one for each start. The state stays until the last is released.
      for (int i = 0; i < starts; ++i) {
        library.ReleaseReferencesOfStarts(1);
        ASSERT_TRUE(LoadedLibrary::IsInProcess());
        EXPECT_EQ(host.GetErrorsCount(), 1);
        EXPECT_EQ(host.LANG(L"key"), text);
        EXPECT_STREQ(text, L"text");
        EXPECT_EQ(host.UseLanguage(L"en"), 0);
      }
    }
    ASSERT_FALSE(LoadedLibrary::IsInProcess());
  }
}

TEST(Module, StaysLoadedUntilTheReferencesOfStartsAreReleased) {
  {
    const LoadedLibrary library;
    const LibraryExports host = ExportsOf(library);
    host.UseLanguage(L"none");
    host.Init0(L"no such folder");
    host.Init0(L"no such folder");
  }
  ASSERT_TRUE(LoadedLibrary::IsInProcess());
  {
    const LoadedLibrary again;
    EXPECT_EQ(ExportsOf(again).GetErrorsCount(), 1) << "it must be the same module";
    again.ReleaseReferencesOfStarts(2);
  }
  EXPECT_FALSE(LoadedLibrary::IsInProcess());
}

// The loader's flags of a module. No header of the system declares them; their offset is the same
// in all 64-bit versions of Windows.
ULONG LoaderFlagsOf(HMODULE module) {
  constexpr std::size_t kFlagsOffset = 0x68;
  const LIST_ENTRY& modules =
      ::NtCurrentTeb()->ProcessEnvironmentBlock->Ldr->InMemoryOrderModuleList;
  for (const LIST_ENTRY* link = modules.Flink; link != &modules; link = link->Flink) {
    const auto* const entry = CONTAINING_RECORD(link, LDR_DATA_TABLE_ENTRY, InMemoryOrderLinks);
    if (entry->DllBase == module) {
      ULONG flags = 0;
      std::memcpy(&flags, reinterpret_cast<const char*>(entry) + kFlagsOffset, sizeof(flags));
      return flags;
    }
  }
  throw std::runtime_error("not in the loader's list");
}

constexpr ULONG kNoThreadCalls = 0x00040000;

TEST(Module, GetsNoThreadNotifications) {
  const LoadedLibrary library;
  const HMODULE module = ::GetModuleHandleA("kelmo_Mestrel_Localizer.dll");
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(LoaderFlagsOf(module) & kNoThreadCalls, kNoThreadCalls) << "the library sets the flag";
  ::SetLastError(0);
  EXPECT_NE(::DisableThreadLibraryCalls(module), FALSE) << "refused: " << ::GetLastError();
  EXPECT_EQ(LoaderFlagsOf(::GetModuleHandleW(nullptr)) & kNoThreadCalls, 0U)
      << "this program gets notifications, so the flag must be clear";
}

// Each thread makes the library throw: its runtime might keep memory per thread for exceptions.
TEST(Module, KeepsNothingPerThread) {
  constexpr std::size_t kWarmUp = 50;
  constexpr std::size_t kThreads = 1000;
  const LoadedLibrary library;
  const LibraryExports host = ExportsOf(library);
  ASSERT_EQ(host.UseLanguage(L"none"), -1);
  std::optional<Footprint> before;
  std::size_t caught = 0;
  for (std::size_t i = 0; i < kWarmUp + kThreads; ++i) {
    if (i == kWarmUp) {
      before = MeasureFootprint();
    }
    std::thread([&host, &caught] {
      try {
        host.GetError(1);
      } catch (const std::out_of_range&) {
        ++caught;
      }
    }).join();
  }
  const std::optional<Footprint> after = MeasureFootprint();
  EXPECT_EQ(caught, kWarmUp + kThreads);
  EXPECT_EQ(host.GetErrorsCount(), 1);
  EXPECT_STREQ(host.GetError(0), L"EL112. Dictionary not found\nDictionary id: none");
  ASSERT_TRUE(before && after);
  EXPECT_LT(after->heapBytes, before->heapBytes + kThreads * 8) << "a block for each thread";
  EXPECT_LT(after->mappedBytes, before->mappedBytes + kThreads * 1024) << "a page for each thread";
  EXPECT_LT(after->nextHandle, before->nextHandle + kThreads) << "a handle for each thread";
  EXPECT_LT(after->nextThreadSlot, before->nextThreadSlot + 8) << "slots of thread-local storage";
}

// The entry of the import table that holds the address of the named function, or null.
void** ImportEntry(HMODULE module, const char* name) {
  auto* const base = reinterpret_cast<unsigned char*>(module);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
  for (; from->Name != 0; ++from) {
    const auto* named = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
    auto** entry = reinterpret_cast<void**>(base + from->FirstThunk);
    for (; named->u1.AddressOfData != 0; ++named, ++entry) {
      const auto* const import =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + named->u1.AddressOfData);
      const bool hasName = !IMAGE_SNAP_BY_ORDINAL(named->u1.Ordinal);
      if (hasName && std::strcmp(reinterpret_cast<const char*>(import->Name), name) == 0) {
        return entry;
      }
    }
  }
  return nullptr;
}

// Returns the old address.
void* Replace(void** entry, void* address) {
  DWORD before = 0;
  EXPECT_TRUE(
      ::VirtualProtect(static_cast<void*>(entry), sizeof(address), PAGE_READWRITE, &before));
  void* const old = std::exchange(*entry, address);
  EXPECT_TRUE(::VirtualProtect(static_cast<void*>(entry), sizeof(address), before, &before));
  return old;
}

// Enough for everything except buffers as long as the file.
void* OnlySmallBlocks(std::size_t bytes) { return bytes < 8192 ? std::malloc(bytes) : nullptr; }

TEST(Module, CatchesItsOwnExceptionsWhenMemoryFails) {
  const ScratchFolder folder;
  folder.Write(L"en.txt", "en\nkey " + std::string(10000, 'a') + "\n");
  const std::wstring path = folder.HostPath();
  const LoadedLibrary library;
  const LibraryExports host = ExportsOf(library);
  void** const entry = ImportEntry(::GetModuleHandleA("kelmo_Mestrel_Localizer.dll"), "malloc");
  ASSERT_NE(entry, nullptr);
  void* const malloc = Replace(entry, reinterpret_cast<void*>(&OnlySmallBlocks));
  const int result = host.LoadDictionary(path.c_str(), L"en.txt");
  Replace(entry, malloc);
  EXPECT_EQ(result, -1);
  EXPECT_EQ(std::wstring(host.GetError(0)),
            L"EL111. Dictionary loading error\nDictionary: " + path + L"\\en.txt");
  EXPECT_EQ(host.LoadDictionary(path.c_str(), L"en.txt"), 1) << "only the earlier message";
  EXPECT_EQ(std::wstring(host.LANG(L"key")), std::wstring(10000, L'a'));
}

int FullDisk(int /*descriptor*/, const void* /*bytes*/, unsigned /*count*/) { return -1; }

int OneByteAtATime(int descriptor, const void* bytes, unsigned count) {
  return ::_write(descriptor, bytes, count > 0 ? 1 : 0);
}

TEST(Module, ExportsInChunksAndStopsWhenTheDiskIsFull) {
  const ScratchFolder folder;
  const ExportPlace exported(folder);
  const LoadedLibrary library;
  const LibraryExports host = ExportsOf(library);
  void** const entry = ImportEntry(::GetModuleHandleA("kelmo_Mestrel_Localizer.dll"), "_write");
  ASSERT_NE(entry, nullptr);
  void* const write = Replace(entry, reinterpret_cast<void*>(&OneByteAtATime));
  EXPECT_EQ(host.ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
  Replace(entry, reinterpret_cast<void*>(&FullDisk));
  EXPECT_EQ(host.ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), "");
  Replace(entry, write);
  library.ReleaseReferencesOfStarts(2);
}

}  // namespace
