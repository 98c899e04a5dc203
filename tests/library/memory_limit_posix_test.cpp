// The built library in a process with limited memory: a load that does not fit reports a failure,
// and nothing older is lost. Unlike in allocation_failures_test.cpp, the system itself refuses the
// memory, and continues to do so.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"
#include "tests/support/test_platform.h"

namespace {

constexpr std::size_t kMegabyte = 1'000'000;

// Limits the address space of the process to `more` bytes above the current size.
class AddressSpaceLimit {
 public:
  explicit AddressSpaceLimit(std::size_t more) {
    ::malloc_trim(0);  // otherwise freed memory could be allocated again in spite of the limit
    const std::size_t now = MeasureFootprint()->mappedBytes;
    ::getrlimit(RLIMIT_AS, &before_);
    const struct rlimit limit = {now + more, before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
  }
  AddressSpaceLimit(const AddressSpaceLimit&) = delete;
  AddressSpaceLimit& operator=(const AddressSpaceLimit&) = delete;
  ~AddressSpaceLimit() { ::setrlimit(RLIMIT_AS, &before_); }

 private:
  struct rlimit before_ = {};
};

// A file of entries of equal length.
struct Entries {
  const char* name;
  std::size_t count;
  std::size_t textBytes;
  bool firstFits;  // below each limit

  static std::wstring Key(std::size_t number) { return L"key" + std::to_wstring(number); }
  std::wstring Text(std::size_t number) const {
    return std::to_wstring(number) + std::wstring(textBytes, L't');
  }
  std::string File(const std::string& header) const {
    std::string bytes = header + "\n";
    for (std::size_t i = 0; i < count; ++i) {
      const std::string number = std::to_string(i);
      bytes += "key" + number + " " + number + std::string(textBytes, 't') + "\n";
    }
    return bytes;
  }
};

class MemoryLimit : public HostTest {
 protected:
  void SetUp() override {
    if (!MeasureFootprint()) {
      GTEST_SKIP() << "the sanitizer itself needs memory";
    }
    ::mallopt(M_MMAP_THRESHOLD, 100'000);  // freed large blocks return to the system at once
    ASSERT_EQ(WriteAndLoad(L"older.txt", "older\nkey older text\nkey again\n"), 1);
    ASSERT_EQ(Text(L"none"), L"");
    olderText_ = host_.LANG(L"key");
  }

  // In a child process, which may stay without memory.
  template <class Work>
  void InChild(Work work) {
    EXPECT_EQ(ExitCodeOf(StartChild([&] {
                work();
                return HasFailure() ? 1 : 0;
              })),
              0);
  }

  void ExpectOlderText() const {
    EXPECT_EQ(host_.UseLanguage(L"older"), 0);
    EXPECT_EQ(host_.LANG(L"key"), olderText_);
    EXPECT_STREQ(olderText_, L"older text");
  }

  const Messages older_ = {
      L"EL101. Key already declared.\nKey: key\nDictionary: " + PathOf(L"older.txt"),
      L"EL121. Key not found in dictionary\nKey: none\nDictionary id: none"};
  const wchar_t* olderText_ = nullptr;
};

TEST_F(MemoryLimit, ADictionaryIsKeptAsFarAsItFits) {
  const Entries rows[] = {
      {"short texts", 60'000, 20, true},
      {"long texts", 6, kMegabyte, false},
      {"a line that no buffer holds", 1, 8 * kMegabyte, false},
  };
  for (const Entries& row : rows) {
    folder_.Write(L"en.txt", row.File("en"));
    for (const std::size_t more : {std::size_t{0}, 3 * kMegabyte}) {
      SCOPED_TRACE(testing::Message() << row.name << ", " << more << " bytes more");
      InChild([&] {
        std::int32_t result = 0;
        {
          const AddressSpaceLimit limit(more);
          result = Load(L"en.txt");
        }
        EXPECT_EQ(result, -1);
        Messages messages = older_;
        messages.push_back(L"EL111. Dictionary loading error\nDictionary: " + PathOf(L"en.txt"));
        EXPECT_EQ(ReadMessages(), messages);
        ExpectOlderText();

        // The same call succeeds afterwards. Its messages name the entries that were kept.
        result = Load(L"en.txt");
        ASSERT_GE(result, 3);
        const std::size_t kept = static_cast<std::size_t>(result) - messages.size();
        EXPECT_LT(kept, row.count);
        EXPECT_TRUE(kept > 0 || !row.firstFits);
        for (std::size_t i = 0; i < kept; ++i) {
          messages.push_back(L"EL101. Key already declared.\nKey: " + Entries::Key(i) +
                             L"\nDictionary: " + PathOf(L"en.txt"));
        }
        EXPECT_EQ(ReadMessages(), messages);
        for (std::size_t i = 0; i < row.count; ++i) {
          EXPECT_TRUE(Text(Entries::Key(i)) == row.Text(i)) << i;
        }
        ExpectOlderText();
      });
    }
  }
}

// No export shows which units of the table were kept. Their memory shows that some are missing.
TEST_F(MemoryLimit, StartingSucceedsIfTheLanguageTableDoesNotFit) {
  constexpr std::size_t kMore = 4 * kMegabyte;
  constexpr std::size_t kFreeBefore = kMegabyte / 8;  // at most, inside the heap
  const struct {
    int count;
    std::size_t nameBytes;
    std::size_t kept;  // bytes, at least
  } rows[] = {{50'000, 20, kMegabyte}, {100, kMegabyte / 10, kMegabyte}, {1, 8 * kMegabyte, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.count << " units");
    std::string bytes = "ru Russian\n";
    for (int code = 1; code <= row.count; ++code) {
      bytes += std::to_string(code) + " m " + std::string(row.nameBytes, 'n') + "\n";
    }
    folder_.Write(L"LANG\\ru-val.txt", bytes);
    InChild([&] {
      const auto start = [&] {
        const std::size_t before = MeasureFootprint()->heapBytes;
        EXPECT_EQ(Init(folder_.HostPath(), L"ru"), 0);
        EXPECT_EQ(ReadMessages(), older_);
        const LoadedUnits units(library_);
        for (const int code : {10001, 10002, 30001, 40001, 40002}) {
          EXPECT_NE(units.Find(code), nullptr) << code;
        }
        EXPECT_EQ(units.Find(20001), nullptr) << "a row from before the start";
        ExpectOlderText();
        return MeasureFootprint()->heapBytes - before;
      };
      {
        const AddressSpaceLimit limit(kMore);
        const std::size_t kept = start();
        EXPECT_GE(kept, row.kept);
        EXPECT_LT(kept, kMore + kFreeBefore);
      }
      EXPECT_GT(start(), bytes.size() * sizeof(wchar_t) - kMore);
    });
  }
}

}  // namespace
