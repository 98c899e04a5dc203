// Unloading is real: nothing of the library stays in the process, however often it is loaded.

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

#include "tests/support/host_test.h"
#include "tests/support/test_platform.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

// Members under the names that GCC and Clang give them; they are called as functions that take the
// object first. Microsoft's compiler does neither.
void UseValues(const LoadedLibrary& library) {
  const std::string prefix = "_ZN9KelmoLibs8Localize6Phyval6Double";
  const auto construct =
      library.Export<void(void*, double, double, double, int)>((prefix + "C1Edddi").c_str());
  const auto destroy = library.Export<void(void*)>((prefix + "D1Ev").c_str());
  const auto check = library.Export<void(void*)>((prefix + "12CheckCorrectEv").c_str());
  const auto text = library.Export<std::wstring(void*)>((prefix + "9to_stringB5cxx11Ev").c_str());
  const auto textWith =
      library.Export<std::wstring(void*, wchar_t)>((prefix + "9to_stringB5cxx11Ew").c_str());
  alignas(Double) unsigned char memory[sizeof(Double)];
  construct(memory, 1234567.5, 0.1, 0, 10003);
  ASSERT_THROW(check(memory), std::invalid_argument);
  ASSERT_EQ(text(memory).size(), 9U);
  ASSERT_EQ(textWith(memory, L','), L"1234567,5");
  destroy(memory);
  construct(memory, std::numeric_limits<double>::infinity(), 0.1, 0, 10001);
  check(memory);
  ASSERT_EQ(textWith(memory, L','), L"inf") << "by a stream";
  destroy(memory);
}

// One life of the library, with all that may leave something behind: stored texts, messages,
// exceptions that the host catches, values and what prints them.
void LoadUseAndUnload(const ScratchFolder& folder) {
  const LoadedLibrary library;
  const LibraryExports host(library);
  ASSERT_EQ(host.GetErrorsCount(), 0) << "messages of an earlier life";
  ASSERT_EQ(host.UseLanguage(L"en"), -1) << "a dictionary of an earlier life";
  ASSERT_STREQ(host.LANG(L"key"), L"");
  ASSERT_EQ(host.LoadDictionary(folder.HostPath().c_str(), L"en.txt"), 3);
  ASSERT_STREQ(host.LANG(L"key"), L"text");
  ASSERT_EQ(::ReadMessages(host),
            (Messages{L"EL112. Dictionary not found\nDictionary id: en",
                      L"EL121. Dictionary not found\nDictionary id: ",
                      L"EL101. Key already declared.\nKey: key\nDictionary: " + folder.HostPath() +
                          L"\\en.txt"}));
  ASSERT_THROW(host.GetError(3), std::out_of_range);
  UseValues(library);
}

TEST(Unload, LeavesNothingBehindHoweverOften) {
  const ScratchFolder folder;
  folder.Write(L"en.txt", "en\nkey text\nkey again\nanother.key another text\n");
  constexpr int kWarmUp = 100;
  constexpr int kCycles = 1200;  // more than Windows has slots of thread-local storage
  std::optional<Footprint> before;
  for (int cycle = 0; cycle < kWarmUp + kCycles; ++cycle) {
    if (cycle == kWarmUp) {
      before = MeasureFootprint();
    }
    LoadUseAndUnload(folder);
    if (HasFatalFailure()) {
      FAIL() << "cycle " << cycle;
    }
    ASSERT_FALSE(LoadedLibrary::IsInProcess()) << "still there after cycle " << cycle;
  }
  const std::optional<Footprint> after = MeasureFootprint();
  if (!before || !after) {
    GTEST_SKIP() << "growth cannot be measured here; the rest holds";
  }
  EXPECT_LT(after->heapBytes, before->heapBytes + kCycles) << "a byte or more for each cycle";
  EXPECT_LT(after->mappedBytes, before->mappedBytes + std::size_t{kCycles} * 1024)
      << "a page or more for each cycle";
  EXPECT_LT(after->nextHandle, before->nextHandle + kCycles) << "a handle for each cycle";
  EXPECT_LT(after->nextThreadSlot, before->nextThreadSlot + kCycles / 2)
      << "a slot of thread-local storage for each cycle";
}

}  // namespace
