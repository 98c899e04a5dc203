// The built library when memory runs out. Only on Linux does the test program's operator new serve
// the library too; dictionary_loader_test.cpp covers the same on Windows from inside.

#include <gtest/gtest.h>

#include <string>

#include "tests/support/allocation_probe.h"
#include "tests/support/library_exports.h"
#include "tests/support/loaded_library.h"
#include "tests/support/scratch_folder.h"

namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::Outcome;

class OutOfMemory : public testing::Test {
 protected:
  OutOfMemory() {
    folder_.Write(L"en.txt",
                  "an.id.that.needs.memory.of.its.own\n"
                  "key.that.needs.memory.of.its.own a text that needs memory of its own\n");
  }

  const ScratchFolder folder_;
  const std::wstring hostPath_ = folder_.HostPath();
  const LoadedLibrary library_;
  const LibraryExports host_{library_};
};

TEST_F(OutOfMemory, LoadDictionaryGivesItsResultAndMessage) {
  const std::wstring message =
      L"EL111. Dictionary loading error\nDictionary: " + hostPath_ + L"\\en.txt";
  std::size_t failures = 0;
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n << " fails");
    host_.ClearErrors();
    std::int32_t result = 0;
    const Outcome outcome = CallWithFailingAllocation(
        n, [&] { result = host_.LoadDictionary(hostPath_.c_str(), L"en.txt"); });
    if (outcome == Outcome::kThrew) {  // the path itself could not be made
      EXPECT_EQ(n, 1U);
      EXPECT_EQ(host_.GetErrorsCount(), 0);
      continue;
    }
    if (outcome == Outcome::kNoFailure) {
      break;
    }
    ++failures;
    EXPECT_EQ(result, -1);
    EXPECT_EQ(host_.GetError(-1), message);
  }
  EXPECT_GE(failures, 5U);
  EXPECT_EQ(host_.UseLanguage(L"an.id.that.needs.memory.of.its.own"), 0);
  EXPECT_STREQ(host_.LANG(L"key.that.needs.memory.of.its.own"),
               L"a text that needs memory of its own");
}

TEST_F(OutOfMemory, FailingToListAMessageReachesTheHost) {
  const auto select = [&] { host_.UseLanguage(L"none"); };
  const auto look = [&] { host_.LANG(L"none"); };
  EXPECT_EQ(CallWithFailingAllocation(1, select), Outcome::kThrew);
  EXPECT_EQ(CallWithFailingAllocation(1, look), Outcome::kThrew);
  EXPECT_EQ(host_.GetErrorsCount(), 0);
  select();
  look();
  EXPECT_EQ(host_.GetErrorsCount(), 2);
}

}  // namespace
