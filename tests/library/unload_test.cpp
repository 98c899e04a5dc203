// Unloading leaves nothing of the library in the process, even after many loads.

#include <gtest/gtest.h>

#include <iostream>
#include <limits>
#include <stdexcept>
#include <string>

#include "tests/support/calling_order.h"
#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"
#include "tests/support/random_numbers.h"
#include "tests/support/test_platform.h"
#include "tests/support/users_locale.h"

using KelmoLibs::Localize::Phyval::ValueType;

namespace {

void UseValues(const LoadedLibrary& library) {
  const LoadedUnits units(library);
  LoadedUnits::Value withoutUnit(units, 1234567.5, 0.1, 10003);
  ASSERT_THROW(withoutUnit.Check(), std::invalid_argument);
  ASSERT_EQ(withoutUnit.Text().size(), 9U);
  ASSERT_EQ(withoutUnit.Text(L','), L"1234567,5");
  LoadedUnits::Value infinite(units, std::numeric_limits<double>::infinity(), 0.1, 10001);
  infinite.Check();
  ASSERT_EQ(infinite.Text(L','), L"inf") << "the library formats it with a stream";
}

// Everything that could leak: stored texts, messages, exceptions that the host catches, values and
// their texts.
void LoadUseAndUnload(const ScratchFolder& folder) {
  const LoadedLibrary library;
  const LibraryExports host = ExportsOf(library);
  ASSERT_EQ(host.GetErrorsCount(), 0) << "messages from an earlier load";
  ASSERT_EQ(host.UseLanguage(L"en"), -1) << "a dictionary from an earlier load";
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
  // Three starts: with a table, without one, and with a file that cannot be written.
  ASSERT_EQ(host.Init(folder.HostPath().c_str(), L"ru"), 0);
  ASSERT_EQ(host.Init0(folder.HostPath().c_str()), 0);
  ASSERT_EQ(host.ExportPhyVal(), 0);
  ASSERT_EQ(host.GetErrorsCount(), 3);
  const ValueType* const meter = LoadedUnits(library).Find(10001);
  ASSERT_NE(meter, nullptr);
  ASSERT_EQ(meter->name, L"meter ");
  ASSERT_EQ(LoadedUnits(library).Find(20001), nullptr);
  UseValues(library);
  library.ReleaseReferencesOfStarts(3);
}

TEST(Unload, ResetsEverythingForTheNextLoad) {
  const ScratchFolder folder;
  for (int load = 0; load < 2; ++load) {
    {
      const LoadedLibrary library;
      ExpectWholeCallOrder(
          ExportsOf(library), folder, [&library](double value, double tolerance, int code) {
            const LoadedUnits units(library);
            LoadedUnits::Value made(units, value, tolerance, code);
            return made.Unit() == nullptr ? L"none" : made.Text(L'.') + L" " + made.Unit()->symbol;
          });
      library.ReleaseReferencesOfStarts(kStartsOfWholeCallOrder);
    }
    ASSERT_FALSE(LoadedLibrary::IsInProcess());
  }
}

TEST(Unload, LeavesNothingBehind) {
  const ScratchFolder folder;
  folder.Write(L"en.txt", "en\nkey text\nkey again\nanother.key another text\n");
  // The library looks up the non-ASCII sign in tables of characters, which it must release.
  folder.Write(L"LANG\\ru-val.txt",
               "ru Russian\n10001 m a long name of the \xCE\xBC unit\n10002\n");
  constexpr int kWarmUp = 100;
  const std::size_t leftByTheSystem = 2 * BytesLeakedByUserLocale();  // for two texts per cycle
  const auto cycles = static_cast<int>(Rounds(1200));  // more than Windows has thread-local slots
  std::optional<Footprint> before;
  for (int cycle = 0; cycle < kWarmUp + cycles; ++cycle) {
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
  const auto growth = static_cast<std::size_t>(cycles);
  std::cout << cycles << " cycles: heap growth "
            << static_cast<std::int64_t>(after->heapBytes - before->heapBytes)
            << " bytes, mapped memory growth "
            << static_cast<std::int64_t>(after->mappedBytes - before->mappedBytes)
            << " bytes; the system's setlocale leaks " << leftByTheSystem << " bytes per cycle\n";
  // Even the smallest leaked block exceeds these limits. They allow for caches of the runtime.
  EXPECT_LT(after->heapBytes, before->heapBytes + growth * (8 + leftByTheSystem))
      << "a block for each cycle";
  EXPECT_LT(after->mappedBytes, before->mappedBytes + growth * 1024)
      << "a page or more for each cycle";
  EXPECT_LT(after->nextHandle, before->nextHandle + growth) << "a handle for each cycle";
  EXPECT_LT(after->nextThreadSlot, before->nextThreadSlot + growth / 2)
      << "a slot of thread-local storage for each cycle";
}

}  // namespace
