// A file whose reading fails midway. The loader calls the OpenTextFile of this program, not that of
// platform/.

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

// Returns `bytes`. Then `fail` throws, or does nothing: an error of the system is an early end.
class FailingSource final : public ByteSource {
 public:
  FailingSource(std::string bytes, std::function<void()> fail)
      : bytes_(std::move(bytes)), fail_(std::move(fail)) {
    ++openSources;
  }
  FailingSource(const FailingSource&) = delete;
  FailingSource& operator=(const FailingSource&) = delete;
  ~FailingSource() override { --openSources; }

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::size_t count = bytes_.copy(buffer, size, position_);
    position_ += count;
    if (count == 0) {
      fail_();
    }
    return count;
  }

  std::size_t SizeHint() const noexcept override { return 1000; }

 private:
  std::string bytes_;
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
    {"an int", [] { throw 1; }, -1, {kOlder, kLoadingError}},
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

// The first part of a file and the expected results. After an exception the complete lines stay.
// After an early end the truncated line stays too.
struct FirstPart {
  const char* bytes;
  const wchar_t* idWhenThrown;
  Contents whenThrown;
  const wchar_t* idWhenEnded;
  Contents whenEnded;
};

TEST(FailingSource, TheLinesBeforeTheFailureStayAndTheResultReportsIt) {
  const auto& older = *kBefore.begin();
  const FirstPart parts[] = {
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
  for (const FirstPart& part : parts) {
    for (const Failure& failure : kFailures) {
      SCOPED_TRACE(testing::Message()
                   << failure.name << " after " << testing::PrintToString(part.bytes));
      openFile = [&] { return std::make_unique<FailingSource>(part.bytes, failure.fail); };
      LoadState state;
      const bool thrown = failure.result < 0;
      EXPECT_EQ(state.Load(), failure.result);
      EXPECT_EQ(ReadAll(state.errors), failure.messages);
      EXPECT_TRUE(Holds(state.dictionaries, thrown ? part.whenThrown : part.whenEnded));
      EXPECT_EQ(state.currentLanguage.id, thrown ? part.idWhenThrown : part.idWhenEnded);
      EXPECT_EQ(openSources, 0) << "the file was not closed";

      openFile = [] { return std::make_unique<FailingSource>("en\nnew text\n", [] {}); };
      EXPECT_EQ(state.Load(), static_cast<std::int32_t>(failure.messages.size()));
      EXPECT_EQ(state.currentLanguage.id, L"en");
      EXPECT_STREQ(FindIn(state.dictionaries[L"en"], L"new"), L"text") << "the next load works";
    }
  }
}

// A failure before the end of the header counts as a missing table; a failure after it counts as a
// failed load.
TEST(FailingSource, ALanguageTableKeepsTheLinesBeforeTheFailure) {
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
  } parts[] = {
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
  for (const auto& part : parts) {
    for (const Failure& failure : kFailures) {
      SCOPED_TRACE(testing::Message()
                   << failure.name << " after " << testing::PrintToString(part.bytes));
      openFile = [&] { return std::make_unique<FailingSource>(part.bytes, failure.fail); };
      LocalizedUnitTable table;
      ErrorList messages;
      // The loader stops at an invalid header, before the failure.
      const bool reachesFailure = std::string(part.bytes) != "ru\n";
      const Result& expected =
          failure.result < 0 && reachesFailure ? part.whenThrown : part.whenEnded;
      EXPECT_EQ(LoadLanguageUnitTable(L"app", LanguageUnitTableName(L"ru"), table, messages),
                expected.status);
      EXPECT_EQ(table, expected.table);
      EXPECT_EQ(ReadAll(messages), expected.messages);
      EXPECT_EQ(openSources, 0) << "the file was not closed";

      openFile = [] { return std::make_unique<FailingSource>("ru R\n3 k kept\n", [] {}); };
      EXPECT_EQ(LoadLanguageUnitTable(L"app", LanguageUnitTableName(L"ru"), table, messages), 0);
      EXPECT_EQ(table[L"ru"].count(3), 1U) << "the next load works";
    }
  }
}

// Calls `check` for each failure that throws, while opening a file throws it.
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

TEST(FailingSource, ALanguageTableWhoseOpeningThrowsIsNotFound) {
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

TEST(FailingSource, ADictionaryWhoseOpeningThrowsChangesNothing) {
  ForEachThrowingOpen([](const Failure& failure) {
    LoadState state;
    EXPECT_EQ(state.Load(), -1);
    EXPECT_EQ(ReadAll(state.errors), failure.messages);
    EXPECT_TRUE(Holds(state.dictionaries, kBefore));
    EXPECT_EQ(state.currentLanguage.id, L"before");
  });
}

TEST(FailingSource, AWrongSizeHintDoesNoHarm) {
  class SourceWithHugeHint final : public ByteSource {
   public:
    std::size_t Read(char* buffer, std::size_t size) override {
      const std::string bytes = "en\nkey text\n";
      return std::exchange(done_, true) ? 0 : bytes.copy(buffer, size);
    }
    std::size_t SizeHint() const noexcept override { return SIZE_MAX; }

   private:
    bool done_ = false;
  };
  openFile = [] { return std::make_unique<SourceWithHugeHint>(); };
  LoadState state;
  EXPECT_EQ(state.Load(), 1);
  EXPECT_TRUE(Holds(state.dictionaries[L"en"], {{L"key", L"text"}}));
}

}  // namespace
}  // namespace KelmoLibs::Localize
