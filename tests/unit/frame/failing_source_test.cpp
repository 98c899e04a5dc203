// A file whose reading fails midway. This program answers the question for a file in the place of
// the operating system: OpenTextFile below is the one that the loader calls.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "dictionary/dictionary_loader.h"
#include "platform/files.h"
#include "tests/support/contents.h"
#include "tests/support/localized_units.h"
#include "tests/support/read_all.h"
#include "unittables/language_table.h"

namespace KelmoLibs::Localize {
namespace {

using Messages = std::vector<std::wstring>;

int openSources = 0;

// Gives the front of a file; then `fail` throws, or stays quiet: that is how the system's own errors
// come, as an early end.
class FailingSource final : public ByteSource {
 public:
  FailingSource(std::string front, std::function<void()> fail)
      : front_(std::move(front)), fail_(std::move(fail)) {
    ++openSources;
  }
  FailingSource(const FailingSource&) = delete;
  FailingSource& operator=(const FailingSource&) = delete;
  ~FailingSource() override { --openSources; }

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::size_t count = front_.copy(buffer, size, position_);
    position_ += count;
    if (count == 0) {
      fail_();
    }
    return count;
  }

  std::size_t SizeHint() const noexcept override { return 1000; }

 private:
  std::string front_;
  std::size_t position_ = 0;
  std::function<void()> fail_;
};

std::function<std::unique_ptr<ByteSource>()> openFile;

}  // namespace

std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& /*path*/) { return openFile(); }

namespace {

struct Failure {
  const char* name;
  std::function<void()> fail;
  std::int32_t result;
  Messages messages;
};

const std::wstring kLoadingError = L"EL111. Dictionary loading error\nDictionary: lang\\en.txt";
const std::wstring kOlder = L"EL112. Dictionary not found\nDictionary id: older";

const Failure kFailures[] = {
    {"the system reports an error", [] {}, 1, {kOlder}},
    {"memory runs out", [] { throw std::bad_alloc(); }, -1, {kOlder, kLoadingError}},
    {"a standard exception", [] { throw std::length_error("x"); }, -1, {kOlder, kLoadingError}},
    {"something that is no exception class", [] { throw 1; }, -1, {kOlder, kLoadingError}},
};

const Contents kBefore = {{L"before", {{L"key", L"older text"}}}};

struct LoadState {
  CurrentLanguage currentLanguage = {L"before", nullptr};
  DictionaryTable dictionaries;
  ErrorList errors;

  LoadState() {
    Fill(dictionaries, kBefore);
    errors.Append(UnknownDictionaryMessage(L"older"));
  }

  std::int32_t Load() {
    return LoadDictionaryFile(L"lang\\en.txt", currentLanguage, dictionaries, errors);
  }
};

// What the front of a file is worth. A failure that throws leaves the lines that were whole; an early
// end also leaves the one that it cuts.
struct Front {
  const char* bytes;
  const wchar_t* idWhenThrown;
  Contents whenThrown;
  const wchar_t* idWhenEnded;
  Contents whenEnded;
};

TEST(FailingSource, WhatWasReadBeforeStaysAndTheResultTellsWhatHappened) {
  const auto& older = *kBefore.begin();
  const Front fronts[] = {
      {"", L"before", {older}, L"before", {older}},
      {"e", L"before", {older}, L"e", {older, {L"e", {}}}},
      {"en Engl", L"before", {older}, L"en", {older, {L"en", {}}}},
      {"en English\n", L"en", {older, {L"en", {}}}, L"en", {older, {L"en", {}}}},
      {"en\nkey", L"en", {older, {L"en", {}}}, L"en", {older, {L"en", {{L"key", L""}}}}},
      {"en\nkey te", L"en", {older, {L"en", {}}}, L"en", {older, {L"en", {{L"key", L"te"}}}}},
      {"en\nkey text\nlast te",
       L"en",
       {older, {L"en", {{L"key", L"text"}}}},
       L"en",
       {older, {L"en", {{L"key", L"text"}, {L"last", L"te"}}}}},
  };
  for (const Front& front : fronts) {
    for (const Failure& failure : kFailures) {
      SCOPED_TRACE(testing::Message()
                   << failure.name << " behind " << testing::PrintToString(front.bytes));
      openFile = [&] { return std::make_unique<FailingSource>(front.bytes, failure.fail); };
      LoadState state;
      const bool thrown = failure.result < 0;
      EXPECT_EQ(state.Load(), failure.result);
      EXPECT_EQ(ReadAll(state.errors), failure.messages);
      EXPECT_TRUE(Holds(state.dictionaries, thrown ? front.whenThrown : front.whenEnded));
      EXPECT_EQ(state.currentLanguage.id, thrown ? front.idWhenThrown : front.idWhenEnded);
      EXPECT_EQ(openSources, 0) << "the file was not let go";

      openFile = [] { return std::make_unique<FailingSource>("en\nnew text\n", [] {}); };
      EXPECT_EQ(state.Load(), static_cast<std::int32_t>(failure.messages.size()));
      EXPECT_EQ(state.currentLanguage.id, L"en");
      EXPECT_STREQ(FindIn(state.dictionaries[L"en"], L"new"), L"text") << "loading goes on as ever";
    }
  }
}

// The same for the loader of language unit tables. A failure in front of the whole header counts as
// no table, one behind it as a failed loading.
TEST(FailingSource, ALanguageTableKeepsWhatWasReadBefore) {
  const std::wstring path = L"app\\LANG/ru-val.txt";
  const std::wstring notFound =
      L"EV111. Dictionary file not found or corrupted\nDictionary: " + path;
  const std::wstring failed = L"EL111. Dictionary loading error\nDictionary: " + path;
  const std::wstring badLine = L"EV101. Error parse string.\nString: 2 n\nDictionary: " + path;
  const LocalizedUnitTable header = {{L"ru", {}}};
  const LocalizedUnitTable unit = {{L"ru", {{1, {L"m", L"name"}}}}};
  struct Result {
    std::int32_t status;
    LocalizedUnitTable table;
    Messages messages;
  };
  const struct {
    const char* bytes;
    Result whenThrown;
    Result whenEnded;
  } fronts[] = {
      {"", {-2, {}, {notFound}}, {-2, {}, {notFound}}},
      {"ru", {-2, {}, {notFound}}, {-2, {}, {notFound}}},
      {"ru Rus", {-2, {}, {notFound}}, {0, header, {}}},
      {"ru\n", {-2, {}, {notFound}}, {-2, {}, {notFound}}},
      {"ru Russian\n", {-1, header, {failed}}, {0, header, {}}},
      {"ru Russian\n1 m name", {-1, header, {failed}}, {0, unit, {}}},
      {"ru Russian\n1 m name\n", {-1, unit, {failed}}, {0, unit, {}}},
      {"ru Russian\n1 m name\n2 n", {-1, unit, {failed}}, {0, unit, {badLine}}},
      {"ru Russian\n1 m name\n2 n\n", {-1, unit, {badLine, failed}}, {0, unit, {badLine}}},
  };
  for (const auto& front : fronts) {
    for (const Failure& failure : kFailures) {
      SCOPED_TRACE(testing::Message()
                   << failure.name << " behind " << testing::PrintToString(front.bytes));
      openFile = [&] { return std::make_unique<FailingSource>(front.bytes, failure.fail); };
      LocalizedUnitTable table;
      ErrorList messages;
      // A table without its header throws nothing more: nobody reads on.
      const bool readsOn = std::string(front.bytes) != "ru\n";
      const Result& expected = failure.result < 0 && readsOn ? front.whenThrown : front.whenEnded;
      EXPECT_EQ(LoadLanguageUnitTable(L"app", LanguageUnitTableName(L"ru"), table, messages),
                expected.status);
      EXPECT_EQ(table, expected.table);
      EXPECT_EQ(ReadAll(messages), expected.messages);
      EXPECT_EQ(openSources, 0) << "the file was not let go";

      openFile = [] { return std::make_unique<FailingSource>("ru R\n3 k kept\n", [] {}); };
      EXPECT_EQ(LoadLanguageUnitTable(L"app", LanguageUnitTableName(L"ru"), table, messages), 0);
      EXPECT_EQ(table[L"ru"].count(3), 1U) << "loading goes on as ever";
    }
  }
}

// Calls `check` for each failure that throws, while opening a file fails by it.
template <class Check>
void ForEachThrowingOpen(Check check) {
  for (const Failure& failure : kFailures) {
    if (failure.result >= 0) {
      continue;
    }
    SCOPED_TRACE(failure.name);
    openFile = [&]() -> std::unique_ptr<ByteSource> {
      failure.fail();
      return nullptr;
    };
    check(failure);
  }
}

TEST(FailingSource, OpeningALanguageTableThatThrowsIsNoTable) {
  ForEachThrowingOpen([](const Failure& /*failure*/) {
    LocalizedUnitTable table;
    ErrorList messages;
    EXPECT_EQ(LoadLanguageUnitTable(L"app", kNeutralUnitTableName, table, messages), -2);
    EXPECT_EQ(table, (LocalizedUnitTable{}));
    EXPECT_EQ(ReadAll(messages),
              (Messages{L"EV111. Dictionary file not found or corrupted\nDictionary: "
                        L"app\\lang-val.text"}));
  });
}

TEST(FailingSource, OpeningThatThrowsChangesNothing) {
  ForEachThrowingOpen([](const Failure& failure) {
    LoadState state;
    EXPECT_EQ(state.Load(), -1);
    EXPECT_EQ(ReadAll(state.errors), failure.messages);
    EXPECT_TRUE(Holds(state.dictionaries, kBefore));
    EXPECT_EQ(state.currentLanguage.id, L"before");
  });
}

TEST(FailingSource, ASizeThatIsFarFromTheTruthCostsNothing) {
  class Boaster final : public ByteSource {
   public:
    std::size_t Read(char* buffer, std::size_t size) override {
      const std::string bytes = "en\nkey text\n";
      return std::exchange(done_, true) ? 0 : bytes.copy(buffer, size);
    }
    std::size_t SizeHint() const noexcept override { return SIZE_MAX; }

   private:
    bool done_ = false;
  };
  openFile = [] { return std::make_unique<Boaster>(); };
  LoadState state;
  EXPECT_EQ(state.Load(), 1);
  EXPECT_TRUE(Holds(state.dictionaries[L"en"], {{L"key", L"text"}}));
}

}  // namespace
}  // namespace KelmoLibs::Localize
