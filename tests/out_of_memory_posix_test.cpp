// The built library when memory runs out: each allocation of each export fails in turn. Only on Linux
// does the test program's operator new serve the library too; dictionary_loader_test.cpp,
// dictionary_table_test.cpp and error_list_test.cpp cover the same on Windows from inside.

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "tests/support/allocation_probe.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"

namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::Failing;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;
using KelmoLibs::Localize::Phyval::ValueType;

// Long enough that each needs memory of its own.
const std::wstring kId = L"an.id.that.needs.memory.of.its.own";
const std::wstring kKey1 = L"first.key.that.needs.memory.of.its.own";
const std::wstring kText1 = L"a text that needs memory of its own";
const std::wstring kKey2 = L"second.key.that.needs.memory.of.its.own";
const std::wstring kText2 = L"another text that needs memory of its own";
const std::wstring kLongId = L"an.id.of.a.dictionary.that.is.loaded.already";
const std::wstring kOlder = L"EL112. Dictionary not found\nDictionary id: none";

class OutOfMemory : public testing::Test {
 protected:
  OutOfMemory() {
    folder_.Write(L"long_id.txt", EncodeUtf8(kLongId) + "\n");
    folder_.Write(L"older.txt", "older\nkey older text\n");
    folder_.Write(L"file.txt", EncodeUtf8(kId) + "\n" + EncodeUtf8(kKey1) + " " +
                                   EncodeUtf8(kText1) + "\n" + EncodeUtf8(kKey1) + " again\n" +
                                   EncodeUtf8(kKey2) + " " + EncodeUtf8(kText2) + "\n");
  }

  // Loads the library anew for each n, with two dictionaries and one message, and makes `call` while
  // its n-th allocation fails; `check` looks at what is left. Nothing may be left once the library
  // is unloaded. Returns how many allocations the call makes.
  template <class Call, class Check>
  std::size_t ForEachAllocation(Failing failing, Call call, Check check) const {
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message() << "allocation " << n << " fails");
      Outcome outcome = Outcome::kNoFailure;
      {
        const LeakCheck everythingIsGivenBack;
        const LoadedLibrary library;
        const LibraryExports host = ExportsOf(library);
        host.LoadDictionary(path_.c_str(), L"long_id.txt");
        host.LoadDictionary(path_.c_str(), L"older.txt");
        host.UseLanguage(L"none");
        outcome = CallWithFailingAllocation(
            n, [&] { call(host); }, failing);
        check(host, LoadedUnits(library), outcome);
      }
      if (outcome == Outcome::kNoFailure || HasFatalFailure()) {
        return n - 1;
      }
    }
  }

  const ScratchFolder folder_;
  const std::wstring path_ = folder_.HostPath();
  const std::wstring loadingError_ =
      L"EL111. Dictionary loading error\nDictionary: " + path_ + L"\\file.txt";
  const std::wstring duplicate_ =
      L"EL101. Key already declared.\nKey: " + kKey1 + L"\nDictionary: " + path_ + L"\\file.txt";
};

TEST_F(OutOfMemory, LoadDictionaryKeepsWhatItReadAndSaysThatItFailed) {
  std::int32_t result = 0;
  const auto load = [&](const LibraryExports& host) {
    result = host.LoadDictionary(path_.c_str(), L"file.txt");
  };
  const std::size_t allocations = ForEachAllocation(
      Failing::kOnce, load,
      [&](const LibraryExports& host, const LoadedUnits& /*units*/, Outcome outcome) {
        const Messages messages = ReadMessages(host);
        switch (outcome) {
          case Outcome::kNoFailure:
            EXPECT_EQ(result, 2);
            EXPECT_EQ(messages, (Messages{kOlder, duplicate_}));
            break;
          case Outcome::kReturned:
            EXPECT_EQ(result, -1);
            if (messages.size() == 2) {
              EXPECT_EQ(messages, (Messages{kOlder, loadingError_}));
            } else {
              EXPECT_EQ(messages, (Messages{kOlder, duplicate_, loadingError_}));
            }
            break;
          case Outcome::kThrew:  // not even the path could be made
            EXPECT_EQ(messages, (Messages{kOlder}));
            EXPECT_STREQ(host.LANG(L"key"), L"older text");
            break;
        }
        // Each entry is there whole or not at all, in the order of the file.
        if (host.UseLanguage(kId.c_str()) == 0) {
          const std::wstring text1 = host.LANG(kKey1.c_str());
          const std::wstring text2 = host.LANG(kKey2.c_str());
          EXPECT_TRUE(text1.empty() || text1 == kText1);
          EXPECT_TRUE(text2.empty() || (text2 == kText2 && text1 == kText1));
        }
        EXPECT_EQ(host.UseLanguage(L"older"), 0);
        EXPECT_STREQ(host.LANG(L"key"), L"older text");
        // The same call succeeds afterwards.
        const std::int32_t again = host.LoadDictionary(path_.c_str(), L"file.txt");
        EXPECT_EQ(again, host.GetErrorsCount());
        EXPECT_EQ(host.LANG(kKey1.c_str()), kText1);
        EXPECT_EQ(host.LANG(kKey2.c_str()), kText2);
      });
  EXPECT_GE(allocations, 10U);
}

TEST_F(OutOfMemory, LoadDictionaryThrowsWhereNotEvenItsMessageCanBeKept) {
  const auto load = [&](const LibraryExports& host) {
    host.LoadDictionary(path_.c_str(), L"file.txt");
  };
  const std::size_t allocations = ForEachAllocation(
      Failing::kFromThenOn, load,
      [&](const LibraryExports& host, const LoadedUnits& /*units*/, Outcome outcome) {
        ASSERT_NE(outcome, Outcome::kReturned);
        const Messages messages = ReadMessages(host);
        if (messages.size() == 1) {
          EXPECT_EQ(messages, (Messages{kOlder}));
        } else {
          EXPECT_EQ(messages, (Messages{kOlder, duplicate_}));
        }
        const std::int32_t again = host.LoadDictionary(path_.c_str(), L"file.txt");
        EXPECT_EQ(again, host.GetErrorsCount());
        EXPECT_EQ(host.LANG(kKey2.c_str()), kText2);
      });
  EXPECT_GE(allocations, 10U);
}

TEST_F(OutOfMemory, LoadDictionaryOfAMissingFileSaysOneOrTheOther) {
  std::int32_t result = 0;
  const auto load = [&](const LibraryExports& host) {
    result = host.LoadDictionary(path_.c_str(), L"missing.txt");
  };
  const std::wstring notFound =
      L"EL111. Dictionary file not found\nDictionary: " + path_ + L"\\missing.txt";
  const std::wstring failed =
      L"EL111. Dictionary loading error\nDictionary: " + path_ + L"\\missing.txt";
  ForEachAllocation(Failing::kOnce, load,
                    [&](const LibraryExports& host, const LoadedUnits& /*units*/, Outcome outcome) {
                      switch (outcome) {
                        case Outcome::kNoFailure:
                          EXPECT_EQ(result, -2);
                          EXPECT_EQ(ReadMessages(host), (Messages{kOlder, notFound}));
                          break;
                        case Outcome::kReturned:
                          EXPECT_EQ(result, -1);
                          EXPECT_EQ(ReadMessages(host), (Messages{kOlder, failed}));
                          break;
                        case Outcome::kThrew:
                          EXPECT_EQ(ReadMessages(host), (Messages{kOlder}));
                          break;
                      }
                      EXPECT_STREQ(host.LANG(L"key"), L"older text");
                    });
}

// Starting: the units are none, or the first of the new ones, or all of them; and whatever failed,
// texts and messages are as they were.
TEST_F(OutOfMemory, StartingLeavesTheNewUnitsAsFarAsTheyWereRead) {
  folder_.Write(L"LANG\\a language that needs memory-val.txt",
                "key.of.a.language.that.needs.memory Language\n"
                "1 symbol.that.needs.memory name that needs memory\n"
                "a.line.that.is.short.and.needs.memory\n");
  const struct {
    const char* name;
    std::function<std::int32_t(const LibraryExports&)> start;
    bool mayReturn;  // problems of the table of a language are listed where no host sees them
    std::size_t allocations;  // at least
  } rows[] = {
      {"Init",
       [this](const LibraryExports& host) {
         return host.Init(path_.c_str(), L"a language that needs memory");
       },
       true, 60},
      {"Init without a file",
       [](const LibraryExports& host) { return host.Init(L"no such folder", L"ru"); }, true, 50},
      {"Init0 without a file",
       [](const LibraryExports& host) { return host.Init0(L"no such folder"); }, true, 50},
      {"ExportPhyVal", [](const LibraryExports& host) { return host.ExportPhyVal(); }, false, 50},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::int32_t result = 0;
    const auto start = [&](const LibraryExports& host) {
      result = -1;
      result = row.start(host);
    };
    const std::size_t allocations = ForEachAllocation(
        Failing::kOnce, start,
        [&](const LibraryExports& host, const LoadedUnits& units, Outcome outcome) {
          EXPECT_EQ(result, outcome == Outcome::kThrew ? -1 : 0);
          EXPECT_TRUE(outcome != Outcome::kReturned || row.mayReturn) << "it was kept back";
          EXPECT_EQ(units.Find(20001), nullptr) << "a row of before";
          bool read = true;  // rows are appended one by one: once one is missing, all are
          for (const int code : {10001, 10002, 30001, 40001, 40002}) {
            const ValueType* const unit = units.Find(code);
            EXPECT_TRUE(read || unit == nullptr) << code;
            read = unit != nullptr;
            EXPECT_TRUE(!read || unit->name.back() == L' ') << "a row of before";
          }
          EXPECT_TRUE(read || outcome == Outcome::kThrew);
          EXPECT_EQ(ReadMessages(host), (Messages{kOlder}));
          EXPECT_STREQ(host.LANG(L"key"), L"older text");
          // The same call succeeds afterwards.
          EXPECT_EQ(row.start(host), 0);
          ASSERT_NE(units.Find(40002), nullptr);
          EXPECT_EQ(units.Find(40002)->name, L"radian ");
        });
    EXPECT_GE(allocations, row.allocations);
  }
}

TEST_F(OutOfMemory, TheOtherExportsThrowAndLeaveEverythingAsItWas) {
  const std::wstring longName(100, L'x');
  const struct {
    const char* name;
    std::function<void(const LibraryExports&)> call;
    Messages listed;          // in the end
    std::size_t allocations;  // at least
  } rows[] = {
      {"UseLanguage of an unknown id",
       [&](const LibraryExports& host) { host.UseLanguage(longName.c_str()); },
       {kOlder, L"EL112. Dictionary not found\nDictionary id: " + longName},
       2},
      {"UseLanguage of an id that needs memory of its own",
       [](const LibraryExports& host) { EXPECT_EQ(host.UseLanguage(kLongId.c_str()), 0); },
       {kOlder},
       1},
      {"LANG of a missing key",
       [&](const LibraryExports& host) { host.LANG(longName.c_str()); },
       {kOlder,
        L"EL121. Key not found in dictionary\nKey: " + longName + L"\nDictionary id: " + longName},
       2},
      {"GetError of the index that throws",
       [](const LibraryExports& host) {
         try {
           host.GetError(1);
         } catch (const std::out_of_range&) {
           return;
         }
         ADD_FAILURE() << "nothing was thrown";
       },
       {kOlder},
       1},
      {"LANG of a key that is there, which needs no memory",
       [](const LibraryExports& host) { EXPECT_STREQ(host.LANG(L"key"), L"older text"); },
       {kOlder},
       0},
      {"ClearErrors, GetErrorsCount and GetError, which need none either",
       [](const LibraryExports& host) {
         EXPECT_EQ(host.GetErrorsCount(), 1);
         EXPECT_EQ(host.GetError(0), kOlder);
         host.ClearErrors();
         host.ClearErrors();
       },
       {},
       0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::size_t allocations = ForEachAllocation(
        Failing::kOnce, row.call,
        [&](const LibraryExports& host, const LoadedUnits& /*units*/, Outcome outcome) {
          ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
          if (outcome == Outcome::kThrew) {
            EXPECT_EQ(ReadMessages(host), (Messages{kOlder}));
            EXPECT_STREQ(host.LANG(L"key"), L"older text");
            row.call(host);
          }
          EXPECT_EQ(ReadMessages(host), row.listed);
        });
    EXPECT_GE(allocations, row.allocations);
    EXPECT_TRUE(row.allocations > 0 || allocations == 0) << "it should need no memory";
  }
}

}  // namespace
