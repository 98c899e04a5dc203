#include "frame/error_list.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>
#include <string>
#include <vector>

#include "storage/text_hash.h"
#include "tests/support/allocation_probe.h"
#include "tests/support/read_all.h"

namespace KelmoLibs::Localize {
namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;

using Expected = std::vector<std::wstring>;

// The messages of these tests differ only in their detail.
const std::wstring kPrefix = L"EL112. Dictionary not found\nDictionary id: ";
Message MessageOf(std::wstring_view detail) { return UnknownDictionaryMessage(detail); }

Expected DetailsOf(const ErrorList& list) {
  Expected details = ReadAll(list);
  for (std::wstring& text : details) {
    EXPECT_EQ(text.substr(0, kPrefix.size()), kPrefix);
    text.erase(0, kPrefix.size());
  }
  return details;
}

TEST(ErrorList, AppendKeepsTheOrderOfFirstAppearance) {
  ErrorList list;
  for (const wchar_t* const text : {L"b", L"a", L"c", L"a", L"b"}) {
    list.Append(MessageOf(text));
  }
  EXPECT_EQ(DetailsOf(list), (Expected{L"b", L"a", L"c"}));
}

TEST(ErrorList, AppendComparesExactly) {
  const struct {
    const char* name;
    Expected appended;
    Expected listed;
  } rows[] = {
      {"the same text twice", {L"text", L"text"}, {L"text"}},
      {"the empty text is a text", {L"", L""}, {L""}},
      {"case differs", {L"text", L"Text"}, {L"text", L"Text"}},
      {"one code unit differs", {L"text1", L"text2"}, {L"text1", L"text2"}},
      {"a text that begins with another", {L"text", L"text "}, {L"text", L"text "}},
      {"composed and decomposed", {L"\u00E4", L"a\u0308"}, {L"\u00E4", L"a\u0308"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ErrorList list;
    for (const std::wstring& text : row.appended) {
      list.Append(MessageOf(text));
    }
    EXPECT_EQ(DetailsOf(list), row.listed);
  }
}

TEST(ErrorList, AppendComparesTextsAlsoAfterANul) {
  ErrorList list;
  list.Append(MessageOf(std::wstring(L"a\0b", 3)));
  list.Append(MessageOf(std::wstring(L"a\0c", 3)));
  list.Append(MessageOf(std::wstring(L"a\0b", 3)));
  EXPECT_EQ(list.Count(), 2);
}

TEST(ErrorList, AtReturnsAMessageForEveryOtherIndex) {
  ErrorList list;
  for (const wchar_t* const text : {L"first", L"second", L"third"}) {
    list.Append(MessageOf(text));
  }
  const struct {
    const char* name;
    std::int32_t index;
    const wchar_t* text;
  } rows[] = {
      {"first", 0, L"first"},
      {"second", 1, L"second"},
      {"last", 2, L"third"},
      {"two past the last gives the last", 4, L"third"},
      {"far past the last gives the last", 1000, L"third"},
      {"the largest index gives the last", INT_MAX, L"third"},
      {"a negative index gives the last", -1, L"third"},
      {"negative indices do not count from the end", -2, L"third"},
      {"minus the count gives the last", -3, L"third"},
      {"the smallest index gives the last", INT_MIN, L"third"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(list.At(row.index), kPrefix + row.text);
  }
}

TEST(ErrorList, AtOnePastTheLastThrows) {
  ErrorList list;
  for (std::int32_t count = 1; count <= 3; ++count) {
    list.Append(MessageOf(std::to_wstring(count)));
    try {
      list.At(count);
      ADD_FAILURE() << "no exception with " << count << " texts";
    } catch (const std::out_of_range& error) {
      EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
    EXPECT_EQ(list.Count(), count);
  }
}

TEST(ErrorList, AtOnAnEmptyListGivesTheEmptyTextForEveryIndex) {
  const ErrorList list;
  for (const std::int32_t index : {0, 1, 5, -1, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(list.At(index), emptyText);
  }
  EXPECT_STREQ(emptyText, L"");
}

TEST(ErrorList, ClearedTextsCanBeAppendedAgain) {
  ErrorList list;
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
  list.Append(MessageOf(L"text"));
  list.Append(MessageOf(L"other"));
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.At(0), emptyText);
  list.Append(MessageOf(L"other"));
  EXPECT_EQ(DetailsOf(list), (Expected{L"other"}));
}

TEST(ErrorList, KeepsTheOrderOfAHundredThousandTexts) {
  ErrorList list;
  constexpr std::int32_t kCount = 100000;
  for (int round = 0; round < 2; ++round) {
    for (std::int32_t i = 0; i < kCount; ++i) {
      list.Append(MessageOf(L"message " + std::to_wstring(i)));
    }
  }
  ASSERT_EQ(list.Count(), kCount);
  for (std::int32_t i = 0; i < kCount; ++i) {
    ASSERT_EQ(list.At(i), kPrefix + L"message " + std::to_wstring(i));
  }
}

TEST(ErrorList, FailedAppendsLeakNoMemory) {
  const std::wstring longText(100'000, L'x');
  for (std::size_t n = 1; n <= 4; ++n) {
    ErrorList list;
    for (int i = 0; i < 64; ++i) {  // the next Append allocates in every container
      list.Append(KeyNotFoundMessage(std::to_wstring(i), 7));
    }
    const std::size_t before = allocation_probe::LiveBytes();
    for (int i = 0; i < 50; ++i) {
      CallWithFailingAllocation(n, [&] { list.Append(KeyNotFoundMessage(longText, 7)); });
      list.Append(KeyNotFoundMessage(L"0", 7));
    }
    EXPECT_LE(allocation_probe::LiveBytes() - before,
              2 * longText.size() * sizeof(wchar_t) + 20'000)
        << n;
  }
}

TEST(ErrorList, AFailedAppendChangesNothing) {
  const std::wstring longText(10'000, L'x');  // gets its own block
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    const LeakCheck leakCheck;
    ErrorList list;
    list.Append(MessageOf(L"before"));
    const Outcome outcome = CallWithFailingAllocation(n, [&] { list.Append(MessageOf(longText)); });
    ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
    if (outcome == Outcome::kNoFailure) {
      EXPECT_EQ(DetailsOf(list), (Expected{L"before", longText}));
      EXPECT_GE(n, 2U) << "nothing was allocated";
      break;
    }
    EXPECT_EQ(DetailsOf(list), (Expected{L"before"}));
    list.Append(MessageOf(longText));
    EXPECT_EQ(DetailsOf(list), (Expected{L"before", longText}));
  }
}

// Keys for messages that all have the hash 7.
std::vector<std::wstring> KeysOfCollidingMessages(int count) {
  std::vector<std::wstring> keys;
  for (int i = 0; i < count; ++i) {
    keys.push_back(L"missing.key." + std::to_wstring(i * 7919 % 100'003));
  }
  return keys;
}

void AppendKeysNotFound(ErrorList& list, const std::vector<std::wstring>& keys) {
  for (const std::wstring& key : keys) {
    list.Append(KeyNotFoundMessage(key, 7));
  }
}

Expected TextsOf(const std::vector<std::wstring>& keys) {
  Expected texts;
  for (const std::wstring& key : keys) {
    texts.push_back(TextOf(KeyNotFoundMessage(key, 7)));
  }
  return texts;
}

TEST(ErrorList, DistinguishesMessagesWithEqualHashes) {
  const std::vector<std::wstring> keys = KeysOfCollidingMessages(1000);
  ErrorList list;
  AppendKeysNotFound(list, keys);
  EXPECT_EQ(ReadAll(list), TextsOf(keys));
  AppendKeysNotFound(list, keys);
  EXPECT_EQ(ReadAll(list), TextsOf(keys)) << "the keys again";

  constexpr int kOthers = 20'000;
  Expected expected = TextsOf(keys);
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < kOthers; ++i) {
      list.Append(MessageOf(L"other " + std::to_wstring(i)));
      if (round == 0) {
        expected.push_back(kPrefix + L"other " + std::to_wstring(i));
      }
    }
    AppendKeysNotFound(list, keys);
    EXPECT_TRUE(ReadAll(list) == expected);
  }

  list.Clear();
  AppendKeysNotFound(list, keys);
  EXPECT_EQ(ReadAll(list), TextsOf(keys)) << "after Clear";
}

TEST(ErrorList, DistinguishesKindsWithEqualHashes) {
  ErrorList list;
  const Message messages[] = {UnknownDictionaryMessage(L"de"), NoCurrentDictionaryMessage(L"de"),
                              DictionaryFileNotFoundMessage(L"de"),
                              DictionaryLoadingErrorMessage(L"de"),
                              UnitTableNotFoundMessage(L"de")};
  Expected expected;
  for (const Message& message : messages) {
    EXPECT_EQ(message.hash, messages[0].hash) << "the hashes differ";
    list.Append(message);
    list.Append(messages[0]);
    expected.push_back(TextOf(message));
  }
  EXPECT_EQ(ReadAll(list), expected);
}

TEST(ErrorList, AllocatesNothingForAListedMessage) {
  const std::vector<std::wstring> keys = KeysOfCollidingMessages(300);
  const std::wstring longText(10'000, L'x');
  ErrorList list;
  AppendKeysNotFound(list, keys);
  list.Append(MessageOf(L""));
  list.Append(MessageOf(longText));
  const std::size_t before = allocation_probe::Count();
  AppendKeysNotFound(list, keys);
  list.Append(MessageOf(L""));
  list.Append(MessageOf(longText));
  EXPECT_EQ(allocation_probe::Count(), before);
  EXPECT_EQ(list.Count(), 302);
}

TEST(ErrorList, AFailedAppendOfACollidingMessageChangesNothing) {
  const std::vector<std::wstring> keys = KeysOfCollidingMessages(101);
  const std::vector<std::wstring> before(keys.begin(), keys.end() - 1);
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    const LeakCheck leakCheck;
    ErrorList list;
    AppendKeysNotFound(list, before);
    const Outcome outcome =
        CallWithFailingAllocation(n, [&] { AppendKeysNotFound(list, {keys.back()}); });
    ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
    if (outcome == Outcome::kNoFailure) {
      EXPECT_GE(n, 2U) << "nothing was allocated";
      break;
    }
    EXPECT_EQ(ReadAll(list), TextsOf(before));
    AppendKeysNotFound(list, keys);
    EXPECT_EQ(ReadAll(list), TextsOf(keys));
  }
}

// A message with the hash of another one is possible, though nobody meets it.
TEST(ErrorList, HasMissingKeyComparesMoreThanTheHash) {
  const std::uint64_t hash = HashText(L"key");
  const auto hasKey = [hash](const ErrorList& list) {
    return list.HasMissingKey<UpTo3>(L"key", 3, hash);
  };
  ErrorList list;
  list.Append({Message::Kind::kUnknownDictionary, L"key", {}, hash});
  EXPECT_FALSE(hasKey(list)) << "of another kind";
  list.Append({Message::Kind::kKeyNotFound, L"ke", {}, hash});
  EXPECT_FALSE(hasKey(list)) << "of another length";
  list.Append({Message::Kind::kKeyNotFound, L"kez", {}, hash});
  EXPECT_FALSE(hasKey(list)) << "of another key";
  list.Append(KeyNotFoundMessage(L"key", hash));
  EXPECT_TRUE(hasKey(list));
  EXPECT_EQ(list.Count(), 4);
}

}  // namespace
}  // namespace KelmoLibs::Localize
