#include "dictionary/dictionary.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/colliding_keys.h"
#include "tests/support/contents.h"
#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;

constexpr std::size_t kMaxKeyLength = 300;
constexpr std::size_t kInitialCapacity = 64;

std::wstring RandomLetters(RandomNumbers& random, std::size_t length, wchar_t first, int letters) {
  std::wstring text;
  while (text.size() < length) {
    text += static_cast<wchar_t>(static_cast<int>(first) + random.Below(letters));
  }
  return text;
}

// Keys of all lengths, of letters that are stored in one, two or four bytes.
std::vector<std::wstring> KeysOfAllLengths() {
  RandomNumbers random(randomSeed);
  std::vector<std::wstring> keys = {L""};
  for (std::size_t length = 1; length <= kMaxKeyLength; ++length) {
    const std::wstring ascii = RandomLetters(random, length, L'a', 26);
    keys.push_back(ascii);
    keys.push_back(L'\u00E4' + ascii.substr(1));
    keys.push_back(ascii.substr(1) + L'\u00E4');
    keys.push_back(RandomLetters(random, length, L'\u0430', 32));
    keys.push_back(RandomLetters(random, length, L'\u4E00', 1000));
    keys.push_back(RandomLetters(random, length - 1, L'a', 26) + L"\U0001F600");
  }
  return keys;
}

// Keys that differ a little from `key`.
std::vector<std::wstring> NeighboursOf(const std::wstring& key) {
  std::vector<std::wstring> neighbours = {key + L'x', key + L'\u00E4', key + L'\0', L'x' + key};
  if (!key.empty()) {
    neighbours.push_back(key.substr(1));
    neighbours.push_back(key.substr(0, key.size() - 1));
  }
  for (const std::size_t offset : {std::size_t{0}, key.size() / 2, key.size() - 1}) {
    if (offset < key.size()) {
      for (const wchar_t other : {L'A', L'\u00FC', static_cast<wchar_t>(key[offset] ^ 0x80)}) {
        neighbours.push_back(key);
        neighbours.back()[offset] = other;
      }
    }
  }
  return neighbours;
}

Texts TextsOf(const std::vector<std::wstring>& keys) {
  Texts texts;
  for (const std::wstring& key : keys) {
    texts.emplace(key, L"text " + std::to_wstring(texts.size()));
  }
  return texts;
}

std::vector<std::wstring> OrdinaryKeys(std::size_t count) {
  std::vector<std::wstring> keys;
  for (std::size_t i = 0; i < count; ++i) {
    keys.push_back(L"menu.file.open_" + std::to_wstring(i));
  }
  return keys;
}

std::vector<std::wstring> FirstCollidingKeys(std::ptrdiff_t count) {
  return {CollidingKeys().begin(), CollidingKeys().begin() + count};
}

TEST(Dictionary, FindsKeysOfEveryLengthAndNothingElse) {
  const Texts texts = TextsOf(KeysOfAllLengths());
  Dictionary dictionary;
  Fill(dictionary, texts);
  ASSERT_TRUE(Holds(dictionary, texts));
  for (const auto& entry : texts) {
    for (const std::wstring& neighbour : NeighboursOf(entry.first)) {
      if (texts.count(neighbour) == 0) {
        ASSERT_EQ(FindIn(dictionary, neighbour), nullptr)
            << testing::PrintToString(neighbour) << ", " << testing::PrintToString(entry.first);
      }
    }
  }
}

TEST(Dictionary, FindsAKeyByAnyCopyOfIt) {
  const std::vector<std::wstring> keys = KeysOfAllLengths();
  Dictionary dictionary;
  Fill(dictionary, TextsOf(keys));
  for (const std::wstring& key : keys) {
    // The memory of the copy ends with the key, so that the sanitizer notices a read after it.
    const std::vector<wchar_t> copy(key.begin(), key.end());
    const std::wstring surrounded = L"##" + key + L"##";
    const wchar_t* const text = FindIn(dictionary, key);
    ASSERT_NE(text, nullptr);
    ASSERT_EQ(FindIn(dictionary, {copy.data(), copy.size()}), text);
    ASSERT_EQ(FindIn(dictionary, std::wstring_view(surrounded).substr(2, key.size())), text);
  }
}

TEST(Dictionary, LookupAllocatesNothing) {
  std::vector<std::wstring> keys = KeysOfAllLengths();
  keys.insert(keys.end(), CollidingKeys().begin(), CollidingKeys().end());
  std::vector<std::wstring> missing;
  for (const std::wstring& key : keys) {
    missing.push_back(key + L"#");
    missing.push_back(key + static_cast<wchar_t>(0xD800));
  }
  const Dictionary empty;
  Dictionary dictionary;
  Fill(dictionary, TextsOf(keys));
  const std::size_t before = allocation_probe::Count();
  bool foundAll = true;
  bool foundAny = false;
  for (const std::wstring& key : keys) {
    foundAll = FindIn(dictionary, key) != nullptr && foundAll;
    foundAny = FindIn(empty, key) != nullptr || foundAny;
  }
  for (const std::wstring& key : missing) {
    foundAny = FindIn(dictionary, key) != nullptr || foundAny;
  }
  EXPECT_EQ(allocation_probe::Count(), before);
  EXPECT_TRUE(foundAll);
  EXPECT_FALSE(foundAny);
}

TEST(Dictionary, ComparesKeysExactly) {
  const Texts texts = TextsOf({L"menu", L"menu\0"s, L"menu\0file"s, L"menu.file.open", L"\0"s,
                               L"menu.file\0open"s, L"menu\uFFFD", L"menu.?.file.open",
                               L"menu.\uFFFD.file.open", L"menu.\U0001F600.file.open",
                               std::wstring(300, L'x'), std::wstring(300, L'x') + L'\0'});
  Dictionary dictionary;
  Fill(dictionary, texts);
  ASSERT_TRUE(Holds(dictionary, texts));
  struct Row {
    const char* name;
    std::wstring key;
  };
  const auto unit = [](std::uint32_t value) {
    return std::wstring(1, static_cast<wchar_t>(value));
  };
  std::vector<Row> rows = {
      {"nothing", L""},
      {"one more NUL", L"menu\0\0"s},
      {"another part after a NUL", L"menu\0fila"s},
      {"a high surrogate at the end", L"menu" + unit(0xD83D)},
      {"a high surrogate instead of a pair", L"menu." + unit(0xD83D) + L".file.open"},
      {"a low surrogate instead of a pair", L"menu." + unit(0xDE00) + L".file.open"},
      {"the surrogates in the wrong order", L"menu." + unit(0xDE00) + unit(0xD83D) + L".file.open"},
      {"only a high surrogate", unit(0xD800)},
      {"a high surrogate after a long key", std::wstring(300, L'x') + unit(0xD800)},
      {"a low surrogate before a long key", unit(0xDFFF) + std::wstring(300, L'x')},
  };
  if (sizeof(wchar_t) == 4) {
    rows.insert(rows.end(),
                {{"beyond U+10FFFF", L"menu." + unit(0x110000) + L".file.open"},
                 {"ASCII in the lower byte", L"menu.file.ope" + unit(0x80000000 + 'n')},
                 {"ASCII in the lower half", L"men" + unit(0x10000 + 'u')},
                 {"the largest", L"menu" + unit(0xFFFFFFFF)},
                 {"the largest after a long key", std::wstring(300, L'x') + unit(0xFFFFFFFF)},
                 {"a surrogate pair in 32-bit characters",
                  L"menu." + unit(0xD83D) + unit(0xDE00) + L".file.open"}});
  }
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(FindIn(dictionary, row.key), nullptr);
  }
}

TEST(Dictionary, KeepsTheFirstTextOfAKey) {
  std::vector<std::wstring> keys = KeysOfAllLengths();
  keys.insert(keys.end(), CollidingKeys().begin(), CollidingKeys().end());
  const Texts texts = TextsOf(keys);
  Dictionary dictionary;
  for (const auto& [key, text] : texts) {
    ASSERT_TRUE(AddTo(dictionary, key, text));
  }
  for (const auto& entry : texts) {
    const std::wstring& key = entry.first;
    const std::size_t before = allocation_probe::Count();
    ASSERT_FALSE(AddTo(dictionary, key, L"other")) << testing::PrintToString(key);
    ASSERT_EQ(allocation_probe::Count(), before) << "allocated for a key that is not added";
  }
  EXPECT_TRUE(Holds(dictionary, texts));
}

TEST(Dictionary, StoresTextsOfEveryLength) {
  RandomNumbers random(randomSeed);
  Texts texts;
  for (std::size_t length = 0; length <= kMaxKeyLength; ++length) {
    texts.emplace(RandomLetters(random, length % 40, L'a', 26) + L'.' + std::to_wstring(length),
                  RandomLetters(random, length, length % 2 == 0 ? L'a' : L'\u0430', 26));
  }
  texts.emplace(L"nul", L"a\0b"s);
  texts.emplace(L"beyond", L"a\U0001F600z");
  texts.emplace(L"large", std::wstring(2'000'000, L'\u0444'));
  Dictionary dictionary;
  Fill(dictionary, texts);
  EXPECT_TRUE(Holds(dictionary, texts));
}

TEST(Dictionary, CountsItsEntries) {
  Dictionary dictionary;
  EXPECT_EQ(dictionary.Count(), 0U);
  std::size_t count = 0;
  for (const std::wstring& key : {L"a"s, std::wstring(300, L'x'), L""s, CollidingKeys()[0]}) {
    EXPECT_TRUE(AddTo(dictionary, key, L"text"));
    EXPECT_EQ(dictionary.Count(), ++count);
    EXPECT_FALSE(AddTo(dictionary, key, L"text"));
    EXPECT_EQ(dictionary.Count(), count);
  }
  dictionary.Grow(1000);
  EXPECT_EQ(dictionary.Count(), count);
}

TEST(Dictionary, KeepsItsTextsAtTheirAddressesWhileItGrows) {
  constexpr std::size_t kEntries = 100'000;
  const std::vector<std::wstring> keys = OrdinaryKeys(kEntries);
  Dictionary dictionary;
  std::vector<const wchar_t*> texts;
  for (const std::wstring& key : keys) {
    ASSERT_TRUE(AddTo(dictionary, key, key));
    texts.push_back(FindIn(dictionary, key));
  }
  ASSERT_EQ(dictionary.Count(), kEntries);
  for (std::size_t i = 0; i < kEntries; ++i) {
    ASSERT_EQ(FindIn(dictionary, keys[i]), texts[i]);
    ASSERT_EQ(texts[i], keys[i]);
  }
}

// record_table_test.cpp tests the bounds of the capacity.
TEST(Dictionary, GrowsToTheExpectedCapacity) {
  constexpr std::size_t kCapacity = 301;
  const std::vector<std::wstring> keys = OrdinaryKeys(kCapacity);
  Texts texts;
  Dictionary dictionary;
  const auto add = [&](const std::wstring& key) {
    texts[key] = key;
    EXPECT_TRUE(AddTo(dictionary, key, key));
  };
  while (dictionary.Count() < 100) {
    add(keys[dictionary.Count()]);
  }
  dictionary.Grow(kCapacity);
  EXPECT_TRUE(Holds(dictionary, texts));
  while (dictionary.Count() < kCapacity) {
    EXPECT_FALSE(dictionary.IsFull()) << "with " << dictionary.Count();
    add(keys[dictionary.Count()]);
  }
  EXPECT_TRUE(dictionary.IsFull());
  EXPECT_TRUE(Holds(dictionary, texts));
}

TEST(Dictionary, FindsKeysWhoseHashesCollide) {
  const Texts colliding = TextsOf(CollidingKeys());
  Dictionary dictionary;
  Fill(dictionary, colliding);
  EXPECT_TRUE(Holds(dictionary, colliding));

  Texts all = colliding;
  for (const std::wstring& key : OrdinaryKeys(20'000)) {
    all.emplace(key, key);
    AddTo(dictionary, key, key);
    if (dictionary.IsFull()) {
      ASSERT_TRUE(Holds(dictionary, all));
    }
  }
  EXPECT_TRUE(Holds(dictionary, all));
  dictionary.Grow(SIZE_MAX);
  EXPECT_TRUE(Holds(dictionary, all)) << "after growing to the largest capacity";
  dictionary.Grow(0);
  EXPECT_TRUE(Holds(dictionary, all)) << "after growing to the smallest capacity";
  for (const std::wstring& key : CollidingKeys()) {
    for (const std::wstring& neighbour : NeighboursOf(key)) {
      EXPECT_EQ(all.count(neighbour) == 0, FindIn(dictionary, neighbour) == nullptr);
    }
    EXPECT_FALSE(AddTo(dictionary, key, L"other"));
  }
}

TEST(Dictionary, FindsOtherKeysBesideKeysWhoseHashesCollide) {
  const std::vector<std::wstring>& keys = CollidingKeys();
  Texts texts;
  Dictionary dictionary;
  std::size_t ordinary = 0;
  for (const std::wstring& key : OrdinaryKeys(keys.size())) {
    for (const std::wstring& added : {key, keys[ordinary]}) {
      texts.emplace(added, added);
      EXPECT_TRUE(AddTo(dictionary, added, added));
    }
    ++ordinary;
  }
  EXPECT_TRUE(Holds(dictionary, texts));
}

// ---- Failing allocations

struct Addition {
  const char* name;
  std::vector<std::wstring> before;
  std::wstring key;
  std::wstring text;
};

std::vector<Addition> Additions() {
  const std::vector<std::wstring> full = OrdinaryKeys(kInitialCapacity);
  // Some of the colliding keys overflow, and the table is full.
  std::vector<std::wstring> fullWithOverflow = FirstCollidingKeys(2 * kInitialCapacity - 8);
  for (const std::wstring& key : OrdinaryKeys(8)) {
    fullWithOverflow.push_back(key);
  }
  return {
      {"the first entry", {}, L"menu.file", L"text"},
      {"a second entry", {L"menu.file"}, L"menu.file.open", std::wstring(5000, L'x')},
      {"an entry that is larger than a block", {L"menu.file"}, L"m", std::wstring(500'000, L'x')},
      {"a long key", {}, std::wstring(300, L'x'), L"text"},
      {"one entry more than the capacity", full, L"menu.file", L"text"},
      {"a key that overflows", FirstCollidingKeys(100), CollidingKeys()[100], L"text"},
      {"one entry more than the capacity, beside overflowed keys", fullWithOverflow, L"menu.file",
       L"text"},
  };
}

TEST(Dictionary, AFailedAddChangesNothing) {
  for (const Addition& addition : Additions()) {
    const std::wstring& key = addition.key;
    const std::wstring& text = addition.text;
    const Texts before = TextsOf(addition.before);
    Texts after = before;
    after.emplace(addition.key, addition.text);
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message() << addition.name << ", allocation " << n);
      const LeakCheck leakCheck;
      Dictionary dictionary;
      Fill(dictionary, before);
      bool added = false;
      const Outcome outcome =
          CallWithFailingAllocation(n, [&] { added = AddTo(dictionary, key, text); });
      ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
      if (outcome == Outcome::kNoFailure) {
        EXPECT_TRUE(added);
        EXPECT_TRUE(Holds(dictionary, after));
        EXPECT_GE(n, 2U) << "nothing was allocated";
        break;
      }
      EXPECT_TRUE(Holds(dictionary, before));
      EXPECT_EQ(FindIn(dictionary, addition.key), nullptr);
      EXPECT_TRUE(AddTo(dictionary, key, text));
      EXPECT_TRUE(Holds(dictionary, after));
    }
  }
}

// In a smaller table some keys overflow, and each of them is allocated separately.
TEST(Dictionary, AFailedGrowChangesNothing) {
  std::vector<std::wstring> keys = FirstCollidingKeys(56);
  for (const std::wstring& key : OrdinaryKeys(1000)) {
    const bool isInFirstHomes = HashText(key) >> 60U == 0;
    if (isInFirstHomes) {
      keys.push_back(key);
    }
  }
  const Texts texts = TextsOf(keys);
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    const LeakCheck leakCheck;
    Dictionary dictionary;
    Fill(dictionary, texts);
    dictionary.Grow(SIZE_MAX);
    const Outcome outcome = CallWithFailingAllocation(n, [&] { dictionary.Grow(0); });
    ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
    EXPECT_TRUE(Holds(dictionary, texts));
    dictionary.Grow(0);
    EXPECT_TRUE(Holds(dictionary, texts));
    dictionary.Grow(SIZE_MAX);
    EXPECT_TRUE(Holds(dictionary, texts));
    if (outcome == Outcome::kNoFailure) {
      EXPECT_GT(n, 3U) << "no key has overflowed";
      break;
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
