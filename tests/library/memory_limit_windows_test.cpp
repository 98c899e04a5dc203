// The built DLL in a process without free memory: a load that does not fit reports a failure, and
// nothing older is lost. The DLL's own runtime throws the exceptions that the DLL catches. CTest
// limits the address space of this program (CMakeLists.txt).

#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"

namespace {

constexpr std::size_t kMegabyte = 1'000'000;

// Reserves the free address space, except for gaps that are too small for a megabyte.
class ReservedAddressSpace {
 public:
  ReservedAddressSpace() {
    constexpr std::size_t kMaxBlocks = 100;
    blocks_.reserve(kMaxBlocks);
    for (std::size_t bytes = std::size_t{1} << 30U; bytes >= kMegabyte / 2; bytes /= 2) {
      void* block = nullptr;
      while (blocks_.size() < kMaxBlocks &&
             (block = ::VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS)) != nullptr) {
        blocks_.push_back(block);
      }
    }
    isComplete_ = blocks_.size() < kMaxBlocks;
  }
  ReservedAddressSpace(const ReservedAddressSpace&) = delete;
  ReservedAddressSpace& operator=(const ReservedAddressSpace&) = delete;
  ~ReservedAddressSpace() {
    for (void* const block : blocks_) {
      ::VirtualFree(block, 0, MEM_RELEASE);
    }
  }

  bool IsComplete() const noexcept { return isComplete_; }

 private:
  std::vector<void*> blocks_;
  bool isComplete_ = false;
};

class MemoryLimitWindows : public HostTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(ReservedAddressSpace().IsComplete()) << "the address space is not limited";
  }
};

TEST_F(MemoryLimitWindows, ADictionaryIsKeptUpToALineThatDoesNotFit) {
  const std::string longText(8 * kMegabyte, 't');
  folder_.Write(L"en.txt", "en\nkey text\nlong " + longText + "\nlast last text\n");
  ASSERT_EQ(WriteAndLoad(L"older.txt", "older\nkey older text\n"), 0);
  const wchar_t* const olderText = host_.LANG(L"key");
  for (int time = 0; time < 2; ++time) {
    std::int32_t result = 0;
    {
      const ReservedAddressSpace reserved;
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

TEST_F(MemoryLimitWindows, StartingSucceedsIfTheLanguageTableDoesNotFit) {
  folder_.Write(L"LANG\\ru-val.txt",
                "ru Russian\n10001 m " + std::string(8 * kMegabyte, 'n') + "\n10002 in inch\n");
  for (int time = 0; time < 2; ++time) {
    {
      const ReservedAddressSpace reserved;
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
