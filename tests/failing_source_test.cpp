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
#include "frame/platform.h"
#include "tests/support/read_all.h"

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
const std::wstring kOlder = L"an older message";

const Failure kFailures[] = {
    {"the system reports an error", [] {}, 1, {kOlder}},
    {"memory runs out", [] { throw std::bad_alloc(); }, -1, {kOlder, kLoadingError}},
    {"a standard exception", [] { throw std::length_error("x"); }, -1, {kOlder, kLoadingError}},
    {"something that is no exception class", [] { throw 1; }, -1, {kOlder, kLoadingError}},
};

struct State {
  std::wstring currentLanguage = L"before";
  DictionaryTable dictionaries = {{L"before", {{L"key", L"older text"}}}};
  ErrorList errors;

  State() { errors.Append(kOlder); }

  std::int32_t Load() {
    return LoadDictionaryFile(L"lang\\en.txt", currentLanguage, dictionaries, errors);
  }
};

// What the front of a file is worth. A failure that throws leaves the lines that were whole; an early
// end also leaves the one that it cuts.
struct Front {
  const char* bytes;
  const wchar_t* idWhenThrown;
  DictionaryTable whenThrown;
  const wchar_t* idWhenEnded;
  DictionaryTable whenEnded;
};

TEST(FailingSource, WhatWasReadBeforeStaysAndTheResultTellsWhatHappened) {
  const std::pair<const std::wstring, Dictionary> older = {L"before", {{L"key", L"older text"}}};
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
      State state;
      const bool thrown = failure.result < 0;
      EXPECT_EQ(state.Load(), failure.result);
      EXPECT_EQ(ReadAll(state.errors), failure.messages);
      EXPECT_EQ(state.dictionaries, thrown ? front.whenThrown : front.whenEnded);
      EXPECT_EQ(state.currentLanguage, thrown ? front.idWhenThrown : front.idWhenEnded);
      EXPECT_EQ(openSources, 0) << "the file was not let go";

      openFile = [] { return std::make_unique<FailingSource>("en\nnew text\n", [] {}); };
      EXPECT_EQ(state.Load(), static_cast<std::int32_t>(failure.messages.size()));
      EXPECT_EQ(state.currentLanguage, L"en");
      EXPECT_EQ(state.dictionaries[L"en"][L"new"], L"text") << "loading goes on as ever";
    }
  }
}

TEST(FailingSource, OpeningThatThrowsChangesNothing) {
  for (const Failure& failure : kFailures) {
    if (failure.result >= 0) {
      continue;
    }
    SCOPED_TRACE(failure.name);
    openFile = [&]() -> std::unique_ptr<ByteSource> {
      failure.fail();
      return nullptr;
    };
    State state;
    const DictionaryTable before = state.dictionaries;
    EXPECT_EQ(state.Load(), -1);
    EXPECT_EQ(ReadAll(state.errors), failure.messages);
    EXPECT_EQ(state.dictionaries, before);
    EXPECT_EQ(state.currentLanguage, L"before");
  }
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
  State state;
  EXPECT_EQ(state.Load(), 1);
  EXPECT_EQ(state.dictionaries[L"en"], (Dictionary{{L"key", L"text"}}));
}

}  // namespace
}  // namespace KelmoLibs::Localize
