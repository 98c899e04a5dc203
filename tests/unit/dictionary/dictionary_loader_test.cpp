#include "dictionary/dictionary_loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "dictionary/lookup.h"
#include "tests/support/allocation_probe.h"
#include "tests/support/contents.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/read_all.h"
#include "tests/support/scratch_folder.h"
#include "text/file_path.h"

namespace KelmoLibs::Localize {
namespace {

struct State {
  CurrentLanguage currentLanguage;
  DictionaryTable dictionaries;
  ErrorList errors;

  std::int32_t Load(const std::wstring& path) {
    return LoadDictionaryFile(path, currentLanguage, dictionaries, errors);
  }
};

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::LimitBytes;
using allocation_probe::Outcome;
using Messages = std::vector<std::wstring>;

const std::wstring kOlder = L"EL112. Dictionary not found\nDictionary id: older";

TEST(LoadDictionaryFile, ReturnsTheLengthOfTheWholeErrorList) {
  const ScratchFolder folder;
  folder.Write(L"en.txt", "en\nk one\nk two\nl three\nl four\n");
  const std::wstring path = JoinPath(folder.HostPath(), L"en.txt");
  State state;
  state.errors.Append(UnknownDictionaryMessage(L"older"));
  EXPECT_EQ(state.Load(path), 3);
  EXPECT_EQ(ReadAll(state.errors),
            (Messages{kOlder, L"EL101. Key already declared.\nKey: k\nDictionary: " + path,
                      L"EL101. Key already declared.\nKey: l\nDictionary: " + path}));
}

TEST(LoadDictionaryFile, AnEmptyFileChangesNothing) {
  const ScratchFolder folder;
  folder.Write(L"empty.txt", "");
  State state;
  state.currentLanguage.id = L"before";
  state.errors.Append(UnknownDictionaryMessage(L"older"));
  EXPECT_EQ(state.Load(JoinPath(folder.HostPath(), L"empty.txt")), 1);
  EXPECT_EQ(state.currentLanguage.id, L"before");
  EXPECT_TRUE(state.dictionaries.empty());
}

TEST(LoadDictionaryFile, AMissingFileIsListedOnceAndChangesNothing) {
  State state;
  state.currentLanguage.id = L"before";
  for (int repeat = 0; repeat < 2; ++repeat) {
    EXPECT_EQ(state.Load(L"no such folder\\en.txt"), -2);
    EXPECT_EQ(ReadAll(state.errors),
              (Messages{L"EL111. Dictionary file not found\nDictionary: no such folder\\en.txt"}));
  }
  EXPECT_EQ(state.currentLanguage.id, L"before");
  EXPECT_TRUE(state.dictionaries.empty());
}

// Too long to be stored without an allocation.
const std::wstring kId = L"an.id.that.needs.memory.of.its.own";
const std::wstring kKey1 = L"first.key.that.needs.memory.of.its.own";
const std::wstring kKey2 = L"second.key.that.needs.memory.of.its.own";

const std::vector<std::pair<std::wstring, std::wstring>> kEntries = {
    {kKey1, L"a text of its own, long enough"},
    {kKey2, L"another text of its own, long enough"},
};

class LoadDictionaryFileWithoutMemory : public testing::Test {
 protected:
  LoadDictionaryFileWithoutMemory() {
    folder_.Write(L"file.txt", EncodeUtf8(kId) + "\n" + EncodeUtf8(kKey1) +
                                   " a text of its own, long enough\n" + EncodeUtf8(kKey1) +
                                   " declared twice\n" + EncodeUtf8(kKey2) +
                                   " another text of its own, long enough\n");
  }

  // The dictionary has the first entries of the file.
  void ExpectFirstEntries(const State& state) const {
    if (state.currentLanguage.id.empty()) {
      EXPECT_TRUE(state.dictionaries.empty());
      return;
    }
    EXPECT_EQ(state.currentLanguage.id, kId);
    if (state.dictionaries.empty()) {
      return;  // the id becomes current before its dictionary is made
    }
    ASSERT_EQ(state.dictionaries.size(), 1U);
    const Dictionary& dictionary = state.dictionaries.at(kId);
    ASSERT_LE(dictionary.Count(), kEntries.size());
    Texts first;
    for (const auto& [key, text] : kEntries) {
      if (first.size() < dictionary.Count()) {
        first.emplace(key, text);
      }
    }
    EXPECT_TRUE(Holds(dictionary, first));
  }

  void ExpectWholeFile(const State& state) const {
    EXPECT_EQ(state.currentLanguage.id, kId);
    EXPECT_TRUE(Holds(state.dictionaries, {{kId, {kEntries.begin(), kEntries.end()}}}));
  }

  const ScratchFolder folder_;
  const std::wstring path_ = JoinPath(folder_.HostPath(), L"file.txt");
  const std::wstring loadingError_ = L"EL111. Dictionary loading error\nDictionary: " + path_;
  const std::wstring duplicate_ =
      L"EL101. Key already declared.\nKey: " + kKey1 + L"\nDictionary: " + path_;
};

TEST_F(LoadDictionaryFileWithoutMemory, ListsTheFailureAndKeepsTheLinesBeforeIt) {
  bool sawNothing = false;
  bool sawIdWithoutDictionary = false;
  bool sawOnlyFirstEntry = false;
  std::size_t n = 1;
  for (;; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n << " fails");
    const LeakCheck leakCheck;
    State state;
    std::int32_t result = 0;
    const Outcome outcome = CallWithFailingAllocation(n, [&] { result = state.Load(path_); });
    ASSERT_NE(outcome, Outcome::kThrew);
    if (outcome == Outcome::kNoFailure) {
      EXPECT_EQ(result, 1);
      EXPECT_EQ(ReadAll(state.errors), (Messages{duplicate_}));
      ExpectWholeFile(state);
      break;
    }
    EXPECT_EQ(result, -1);
    ASSERT_FALSE(ReadAll(state.errors).empty());
    EXPECT_EQ(ReadAll(state.errors).back(), loadingError_);
    ExpectFirstEntries(state);
    sawNothing |= state.currentLanguage.id.empty();
    if (!state.currentLanguage.id.empty() && state.dictionaries.empty()) {
      sawIdWithoutDictionary = true;
      EXPECT_EQ(FindText(kKey1.c_str(), state.currentLanguage, state.errors), emptyText);
      EXPECT_EQ(ReadAll(state.errors).back(),
                L"EL121. Dictionary not found\nDictionary id: " + kId);
    }
    sawOnlyFirstEntry |= !state.dictionaries.empty() && state.dictionaries.at(kId).Count() == 1;

    EXPECT_GE(state.Load(path_), 1);
    ExpectWholeFile(state);
  }
  EXPECT_GE(n, 10U);
  EXPECT_TRUE(sawNothing);
  EXPECT_TRUE(sawIdWithoutDictionary);
  EXPECT_TRUE(sawOnlyFirstEntry);
}

TEST_F(LoadDictionaryFileWithoutMemory, ThrowsIfTheMessageCannotBeStored) {
  std::size_t n = 1;
  for (;; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n << " and all later ones fail");
    const LeakCheck leakCheck;
    State state;
    const Outcome outcome = CallWithFailingAllocation(
        n, [&] { state.Load(path_); }, allocation_probe::Failing::kFromThenOn);
    ASSERT_NE(outcome, Outcome::kReturned);
    if (outcome == Outcome::kNoFailure) {
      break;
    }
    ExpectFirstEntries(state);
    const Messages messages = ReadAll(state.errors);
    EXPECT_EQ(std::count(messages.begin(), messages.end(), loadingError_), 0);
  }
  EXPECT_GE(n, 10U);
}

// ---- A limit of the allocated bytes

class LoadDictionaryFileWithinALimit : public testing::Test {
 protected:
  LoadDictionaryFileWithinALimit() {
    std::string bytes = EncodeUtf8(kId) + "\n";
    for (std::size_t line = 0; line < kLines; ++line) {
      bytes += EncodeUtf8(KeyOf(line)) + " " + EncodeUtf8(TextOf(line)) + "\n";
    }
    folder_.Write(L"file.txt", bytes);
  }

  // Every tenth line declares the key of the line before it again.
  static bool IsDuplicate(std::size_t line) { return line % 10 == 9; }
  static std::wstring KeyOf(std::size_t line) {
    return L"a.key.that.needs.memory.of.its.own." +
           std::to_wstring(IsDuplicate(line) ? line - 1 : line);
  }
  static std::wstring TextOf(std::size_t line) {
    return std::wstring(20 + line % 7, L't') + std::to_wstring(line);
  }

  // The entries of the first `lines` lines.
  static Texts FirstTexts(std::size_t lines) {
    Texts texts;
    for (std::size_t line = 0; line < lines; ++line) {
      texts.emplace(KeyOf(line), TextOf(line));
    }
    return texts;
  }
  Messages FirstMessages(std::size_t lines) const {
    Messages messages = {older_};
    for (std::size_t line = 0; line < lines; ++line) {
      if (IsDuplicate(line)) {
        messages.push_back(L"EL101. Key already declared.\nKey: " + KeyOf(line) +
                           L"\nDictionary: " + path_);
      }
    }
    return messages;
  }

  static constexpr std::size_t kLines = 600;
  const std::wstring older_ = L"EL112. Dictionary not found\nDictionary id: older";
  const ScratchFolder folder_;
  const std::wstring path_ = JoinPath(folder_.HostPath(), L"file.txt");
  const std::wstring loadingError_ = L"EL111. Dictionary loading error\nDictionary: " + path_;
};

TEST_F(LoadDictionaryFileWithinALimit, KeepsTheFirstLinesAndAllOlderData) {
  constexpr std::size_t kStep = 2003;
  int increases = 0;
  std::size_t minLines = 0;
  std::int32_t result = -1;
  for (std::size_t more = 0; result < 0; more += kStep) {
    SCOPED_TRACE(testing::Message() << more << " bytes");
    ASSERT_LT(more, 1'000'000U) << "the file never fits";
    const LeakCheck leakCheck;
    State state;
    Fill(state.dictionaries, {{L"older", {{L"key", L"an older text"}}}});
    ASSERT_EQ(SelectDictionary(L"older", state.currentLanguage, state.dictionaries, state.errors),
              0);
    state.errors.Append(UnknownDictionaryMessage(L"older"));
    const wchar_t* const olderText = FindText(L"key", state.currentLanguage, state.errors);
    const wchar_t* const olderMessage = state.errors.At(0);
    const std::size_t maxBytes = allocation_probe::LiveBytes() + more;
    allocation_probe::ResetPeak();
    bool threw = false;
    {
      const LimitBytes limit(more);
      try {
        result = state.Load(path_);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
    }
    EXPECT_LE(allocation_probe::PeakBytes(), maxBytes);
    EXPECT_EQ(FindIn(state.dictionaries[L"older"], L"key"), olderText);
    EXPECT_STREQ(olderText, L"an older text");
    EXPECT_EQ(state.errors.At(0), olderMessage);

    // Each of the first lines is an entry or a message.
    Messages messages = ReadAll(state.errors);
    if (!threw && result < 0) {
      EXPECT_EQ(result, -1);
      EXPECT_EQ(messages.back(), loadingError_);
      messages.pop_back();
    }
    ASSERT_FALSE(messages.empty());
    const std::size_t lines = state.dictionaries[kId].Count() + messages.size() - 1;
    EXPECT_TRUE(Holds(state.dictionaries[kId], FirstTexts(lines)));
    EXPECT_EQ(messages, FirstMessages(lines));
    EXPECT_EQ(lines == kLines, result >= 0);
    EXPECT_GE(lines, minLines) << "more memory, but fewer lines";
    increases += lines > minLines ? 1 : 0;
    minLines = lines;

    // The same call then succeeds; the keys of the first lines are declared already.
    if (result < 0) {
      EXPECT_GE(state.Load(path_), 0);
      EXPECT_EQ(state.currentLanguage.id, kId);
      EXPECT_TRUE(Holds(state.dictionaries[kId], FirstTexts(kLines)));
    }
  }
  EXPECT_GE(increases, 10);
}

}  // namespace
}  // namespace KelmoLibs::Localize
