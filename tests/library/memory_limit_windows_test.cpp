// The built DLL in a process that has no more memory: what does not fit is said to have failed, and nothing
// else is lost. Here the DLL's own runtime throws what the DLL catches. Whoever starts the program limits
// its address space.

#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"

namespace {

constexpr std::size_t kMegabyte = 1'000'000;

// While it lives, nothing of a megabyte finds a place any more; small things still do in the gaps.
class TakenAddressSpace {
 public:
  TakenAddressSpace() {
    constexpr std::size_t kMostPieces = 100;
    taken_.reserve(kMostPieces);
    for (std::size_t bytes = std::size_t{1} << 30U; bytes >= kMegabyte / 2; bytes /= 2) {
      void* place = nullptr;
      while (taken_.size() < kMostPieces &&
             (place = ::VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS)) != nullptr) {
        taken_.push_back(place);
      }
    }
    isAll_ = taken_.size() < kMostPieces;
  }
  TakenAddressSpace(const TakenAddressSpace&) = delete;
  TakenAddressSpace& operator=(const TakenAddressSpace&) = delete;
  ~TakenAddressSpace() {
    for (void* const place : taken_) {
      ::VirtualFree(place, 0, MEM_RELEASE);
    }
  }

  bool IsAll() const noexcept { return isAll_; }

 private:
  std::vector<void*> taken_;
  bool isAll_ = false;
};

class MemoryLimitWindows : public HostTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(TakenAddressSpace().IsAll()) << "the address space is not limited";
  }
};

TEST_F(MemoryLimitWindows, ADictionaryWithALineThatDoesNotFitIsThereUpToIt) {
  const std::string longText(8 * kMegabyte, 't');
  folder_.Write(L"en.txt", "en\nkey text\nlong " + longText + "\nlast last text\n");
  ASSERT_EQ(WriteAndLoad(L"older.txt", "older\nkey older text\n"), 0);
  const wchar_t* const olderText = host_.LANG(L"key");
  for (int time = 0; time < 2; ++time) {
    std::int32_t result = 0;
    {
      const TakenAddressSpace taken;
      result = Load(L"en.txt");
    }
    EXPECT_EQ(result, -1);
    Messages messages = {L"EL111. Dictionary loading error\nDictionary: " + PathOf(L"en.txt")};
    if (time > 0) {
      messages.insert(messages.begin(),
                      L"EL101. Key already declared.\nKey: key\nDictionary: " + PathOf(L"en.txt"));
    }
    EXPECT_EQ(ReadMessages(), messages);
    host_.ClearErrors();
    EXPECT_EQ(Text(L"key"), L"text");
    EXPECT_EQ(host_.UseLanguage(L"older"), 0);
    EXPECT_EQ(host_.LANG(L"key"), olderText);
    EXPECT_STREQ(olderText, L"older text");
  }
  EXPECT_EQ(Load(L"en.txt"), 1);
  EXPECT_TRUE(Text(L"long") == std::wstring(longText.begin(), longText.end()));
  EXPECT_EQ(Text(L"last"), L"last text");
}

TEST_F(MemoryLimitWindows, ATableOfALanguageThatDoesNotFitIsNoFailureOfTheStart) {
  folder_.Write(L"LANG\\ru-val.txt",
                "ru Russian\n10001 m " + std::string(8 * kMegabyte, 'n') + "\n10002 in inch\n");
  for (int time = 0; time < 2; ++time) {
    {
      const TakenAddressSpace taken;
      EXPECT_EQ(Init(folder_.HostPath(), L"ru"), 0);
    }
    EXPECT_EQ(ReadMessages(), Messages{});
    const LoadedUnits units(library_);
    for (const int code : {10001, 10002, 30001, 40001, 40002}) {
      EXPECT_NE(units.Find(code), nullptr) << code;
    }
  }
}

}  // namespace
