#include "dictionary/lookup.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/colliding_keys.h"
#include "tests/support/contents.h"
#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;

const std::wstring kLongId =
    L"a dictionary id that is too long to be kept without memory of its own";
const std::wstring kLongKey = L"a.key.that.is.too.long.to.be.kept.without.memory.of.its.own";

struct State {
  DictionaryTable dictionaries;
  CurrentLanguage currentLanguage;
  ErrorList errors;

  State() {
    Fill(dictionaries, {
                           {L"de",
                            {{L"menu.file", L"Datei"},
                             {L"empty", L""},
                             {L"", L"without a key"},
                             {kLongKey, L"x"}}},
                           {L"en", {{L"menu.file", L"File"}}},
                           {kLongId, {}},
                       });
    Select(L"de");
  }

  std::int32_t Select(std::wstring_view id) {
    return SelectDictionary(id, currentLanguage, dictionaries, errors);
  }
  const wchar_t* Find(const std::wstring& key) {
    return FindText(key.c_str(), currentLanguage, errors);
  }
};

TEST(SelectDictionary, MatchesIdsExactly) {
  const struct {
    const char* name;
    const wchar_t* id;
    std::int32_t result;
    const wchar_t* currentLanguage;
    const wchar_t* message;
  } rows[] = {
      {"a loaded id", L"en", 0, L"en", nullptr},
      {"the current id again", L"de", 0, L"de", nullptr},
      {"another case", L"EN", -1, L"de", L"EL112. Dictionary not found\nDictionary id: EN"},
      {"a blank at the end", L"en ", -1, L"de", L"EL112. Dictionary not found\nDictionary id: en "},
      {"the beginning of an id", L"e", -1, L"de", L"EL112. Dictionary not found\nDictionary id: e"},
      {"the empty id", L"", -1, L"de", L"EL112. Dictionary not found\nDictionary id: "},
      {"after all ids", L"zz", -1, L"de", L"EL112. Dictionary not found\nDictionary id: zz"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    State state;
    EXPECT_EQ(state.Select(row.id), row.result);
    EXPECT_EQ(state.currentLanguage.id, row.currentLanguage);
    ASSERT_EQ(state.errors.Count(), row.message != nullptr ? 1 : 0);
    if (row.message != nullptr) {
      EXPECT_STREQ(state.errors.At(0), row.message);
    }
  }
}

TEST(SelectDictionary, AcceptsTheEmptyIdOfADictionary) {
  State state;
  state.dictionaries.try_emplace(L"");
  EXPECT_EQ(state.Select(L""), 0);
  EXPECT_EQ(state.currentLanguage.id, L"");
  EXPECT_EQ(state.errors.Count(), 0);
}

TEST(FindText, MatchesKeysExactly) {
  const struct {
    const char* name;
    const wchar_t* key;
    const wchar_t* text;
    const wchar_t* message;
  } rows[] = {
      {"a key", L"menu.file", L"Datei", nullptr},
      {"a key with an empty text", L"empty", L"", nullptr},
      {"the empty key", L"", L"without a key", nullptr},
      {"another case", L"Menu.file", L"",
       L"EL121. Key not found in dictionary\nKey: Menu.file\nDictionary id: Menu.file"},
      {"a blank at the end", L"menu.file ", L"",
       L"EL121. Key not found in dictionary\nKey: menu.file \nDictionary id: menu.file "},
      {"the beginning of a key", L"menu", L"",
       L"EL121. Key not found in dictionary\nKey: menu\nDictionary id: menu"},
      {"after all keys", L"zz", L"",
       L"EL121. Key not found in dictionary\nKey: zz\nDictionary id: zz"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    State state;
    for (int repeat = 0; repeat < 2; ++repeat) {  // the repeated lookup lists nothing
      EXPECT_STREQ(state.Find(row.key), row.text);
      ASSERT_EQ(state.errors.Count(), row.message != nullptr ? 1 : 0);
    }
    if (row.message != nullptr) {
      EXPECT_STREQ(state.errors.At(0), row.message);
    }
  }
}

TEST(FindText, TreatsNullAsTheEmptyKey) {
  State state;
  EXPECT_STREQ(FindText(nullptr, state.currentLanguage, state.errors), L"without a key");
  EXPECT_EQ(state.Select(L"en"), 0);
  EXPECT_EQ(FindText(nullptr, state.currentLanguage, state.errors), emptyText);
  ASSERT_EQ(state.errors.Count(), 1);
  EXPECT_STREQ(state.errors.At(0), L"EL121. Key not found in dictionary\nKey: \nDictionary id: ");
}

// The memory of a key ends with the key, so that the sanitizer notices a read after it.
TEST(FindText, FindsAndMissesKeysOfEveryLength) {
  constexpr std::size_t kMaxKeyLength = 80;
  RandomNumbers random(randomSeed);
  Texts texts;
  std::vector<std::wstring> missing;
  for (std::size_t length = 2; length <= kMaxKeyLength; ++length) {
    for (const wchar_t first : {L'a', L'\u0430', L'\u4E00', L'\uD000'}) {
      std::wstring key;
      while (key.size() < length) {
        key += static_cast<wchar_t>(static_cast<int>(first) + random.Below(26));
      }
      texts.emplace(key, L"text of " + key);
      for (const std::size_t offset : {std::size_t{0}, length / 2, length - 1}) {
        missing.push_back(key);
        missing.back()[offset] = L'#';
      }
    }
  }
  for (const std::wstring& key : CollidingKeys()) {
    texts.emplace(key, L"text of " + key);
    missing.push_back(key + L'#');
  }
  State state;
  Fill(state.dictionaries, {{L"all", texts}});
  ASSERT_EQ(state.Select(L"all"), 0);
  const auto find = [&state](const std::wstring& key) {
    const std::vector<wchar_t> copy(key.c_str(), key.c_str() + key.size() + 1);
    return FindText(copy.data(), state.currentLanguage, state.errors);
  };
  for (const auto& [key, text] : texts) {
    ASSERT_EQ(find(key), text);
  }
  EXPECT_EQ(state.errors.Count(), 0);
  for (int repeat = 0; repeat < 2; ++repeat) {
    for (const std::wstring& key : missing) {
      ASSERT_EQ(find(key), emptyText) << testing::PrintToString(key);
    }
  }
  std::set<std::wstring> messages;
  for (const std::wstring& key : missing) {
    messages.insert(L"EL121. Key not found in dictionary\nKey: " + key + L"\nDictionary id: " +
                    key);
  }
  ASSERT_EQ(static_cast<std::size_t>(state.errors.Count()), messages.size());
  for (int i = 0; i < static_cast<int>(messages.size()); ++i) {
    EXPECT_EQ(messages.count(state.errors.At(i)), 1U) << i;
  }
}

TEST(FindText, ListsAllMissingKeysWhoseHashesCollide) {
  State state;
  for (int repeat = 0; repeat < 2; ++repeat) {
    for (const std::wstring& key : CollidingKeys()) {
      ASSERT_EQ(state.Find(key), emptyText);
    }
  }
  ASSERT_EQ(static_cast<std::size_t>(state.errors.Count()), CollidingKeys().size());
}

TEST(FindText, ListsTheCurrentIdIfNoDictionaryHasIt) {
  for (const wchar_t* const id : {L"", L"fr"}) {
    SCOPED_TRACE(testing::PrintToString(id));
    State state;
    state.currentLanguage = {id, nullptr};
    EXPECT_EQ(state.Find(L"menu.file"), emptyText);
    ASSERT_EQ(state.errors.Count(), 1);
    EXPECT_EQ(state.errors.At(0),
              L"EL121. Dictionary not found\nDictionary id: " + std::wstring(id));
  }
}

TEST(FindText, AStoredEmptyTextHasItsOwnAddress) {
  State state;
  EXPECT_NE(state.Find(L"empty"), emptyText);
  EXPECT_EQ(state.Find(L"missing"), emptyText);
}

TEST(FindText, AllocatesNothingIfTheKeyExists) {
  State state;
  for (const std::wstring& key : {std::wstring(L"menu.file"), kLongKey}) {
    const std::size_t before = allocation_probe::Count();
    const wchar_t* const text = state.Find(key);
    EXPECT_EQ(allocation_probe::Count(), before);
    EXPECT_STRNE(text, L"");
  }
}

TEST(SelectDictionary, AllocatesAtMostTheCopyOfTheId) {
  State state;
  const std::size_t before = allocation_probe::Count();
  EXPECT_EQ(state.Select(kLongId), 0);
  EXPECT_LE(allocation_probe::Count(), before + 1);
}

TEST(SelectDictionary, KeepsTheSelectionIfMemoryRunsOut) {
  State state;
  EXPECT_EQ(CallWithFailingAllocation(1, [&] { state.Select(kLongId); }), Outcome::kThrew);
  EXPECT_EQ(state.currentLanguage.id, L"de");
  EXPECT_EQ(state.Select(kLongId), 0);
}

TEST(SelectDictionary, PassesOnAFailureToListAMessage) {
  for (std::size_t n = 1;; ++n) {
    const LeakCheck leakCheck;
    State state;
    const Outcome outcome = CallWithFailingAllocation(n, [&] { state.Select(L"none"); });
    EXPECT_NE(outcome, Outcome::kReturned);
    EXPECT_EQ(state.currentLanguage.id, L"de");
    EXPECT_EQ(state.errors.Count(), outcome == Outcome::kThrew ? 0 : 1);
    if (outcome == Outcome::kNoFailure) {
      EXPECT_GE(n, 2U) << "nothing was allocated";
      break;
    }
  }
}

TEST(FindText, PassesOnAFailureToListAMessage) {
  for (const wchar_t* const current : {L"de", L"none"}) {
    SCOPED_TRACE(testing::PrintToString(current));
    for (std::size_t n = 1;; ++n) {
      const LeakCheck leakCheck;
      State state;
      if (state.Select(current) != 0) {
        state.currentLanguage = {current, nullptr};
        state.errors.Clear();
      }
      const Outcome outcome = CallWithFailingAllocation(n, [&] { state.Find(L"missing"); });
      EXPECT_NE(outcome, Outcome::kReturned);
      EXPECT_EQ(state.errors.Count(), outcome == Outcome::kThrew ? 0 : 1);
      if (outcome == Outcome::kNoFailure) {
        EXPECT_GE(n, 2U) << "nothing was allocated";
        break;
      }
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
