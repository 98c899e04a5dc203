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

constexpr std::size_t kLongestKey = 300;
constexpr std::size_t kFewEntries = 64;

std::wstring RandomLetters(RandomNumbers& random, std::size_t length, wchar_t first, int letters) {
  std::wstring text;
  while (text.size() < length) {
    text += static_cast<wchar_t>(static_cast<int>(first) + random.Below(letters));
  }
  return text;
}

// Keys of each length, of letters that differ in their bytes.
std::vector<std::wstring> KeysOfAllLengths() {
  RandomNumbers random(randomSeed);
  std::vector<std::wstring> keys = {L""};
  for (std::size_t length = 1; length <= kLongestKey; ++length) {
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

// What is nearly `key`.
std::vector<std::wstring> NeighboursOf(const std::wstring& key) {
  std::vector<std::wstring> neighbours = {key + L'x', key + L'\u00E4', key + L'\0', L'x' + key};
  if (!key.empty()) {
    neighbours.push_back(key.substr(1));
    neighbours.push_back(key.substr(0, key.size() - 1));
  }
  for (const std::size_t place : {std::size_t{0}, key.size() / 2, key.size() - 1}) {
    if (place < key.size()) {
      for (const wchar_t other : {L'A', L'\u00FC', static_cast<wchar_t>(key[place] ^ 0x80)}) {
        neighbours.push_back(key);
        neighbours.back()[place] = other;
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

TEST(Dictionary, FindsKeysOfEveryLengthAndNoneOther) {
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
    const std::vector<wchar_t> alone(key.begin(), key.end());  // ends where its memory does
    const std::wstring around = L"##" + key + L"##";
    const wchar_t* const text = FindIn(dictionary, key);
    ASSERT_NE(text, nullptr);
    ASSERT_EQ(FindIn(dictionary, {alone.data(), alone.size()}), text);
    ASSERT_EQ(FindIn(dictionary, std::wstring_view(around).substr(2, key.size())), text);
  }
}

TEST(Dictionary, TakesNoMemoryToFindOrMissAKey) {
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

TEST(Dictionary, FindsKeysOfAHostExactly) {
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
      {"a NUL more", L"menu\0\0"s},
      {"another part behind a NUL", L"menu\0fila"s},
      {"half a pair", L"menu" + unit(0xD83D)},
      {"half a pair in the place of another character", L"menu." + unit(0xD83D) + L".file.open"},
      {"the other half", L"menu." + unit(0xDE00) + L".file.open"},
      {"the halves in the wrong order", L"menu." + unit(0xDE00) + unit(0xD83D) + L".file.open"},
      {"half a pair alone", unit(0xD800)},
      {"half a pair behind a long key", std::wstring(300, L'x') + unit(0xD800)},
      {"half a pair in front of a long key", unit(0xDFFF) + std::wstring(300, L'x')},
  };
  if (sizeof(wchar_t) == 4) {
    rows.insert(
        rows.end(),
        {{"beyond U+10FFFF", L"menu." + unit(0x110000) + L".file.open"},
         {"ASCII in the lower byte", L"menu.file.ope" + unit(0x80000000 + 'n')},
         {"ASCII in the lower half", L"men" + unit(0x10000 + 'u')},
         {"the largest", L"menu" + unit(0xFFFFFFFF)},
         {"the largest behind a long key", std::wstring(300, L'x') + unit(0xFFFFFFFF)},
         {"a pair where none is needed", L"menu." + unit(0xD83D) + unit(0xDE00) + L".file.open"}});
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
    ASSERT_EQ(allocation_probe::Count(), before) << "memory for what is not added";
  }
  EXPECT_TRUE(Holds(dictionary, texts));
}

TEST(Dictionary, StoresTextsOfEveryLength) {
  RandomNumbers random(randomSeed);
  Texts texts;
  for (std::size_t length = 0; length <= kLongestKey; ++length) {
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

TEST(Dictionary, LeavesItsTextsWhereTheyAreWhileItGrows) {
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

// How much is within reason, record_table_test.cpp has.
TEST(Dictionary, MakesRoomInItsTable) {
  constexpr std::size_t kRoom = 301;
  const std::vector<std::wstring> keys = OrdinaryKeys(kRoom);
  Texts texts;
  Dictionary dictionary;
  const auto add = [&](const std::wstring& key) {
    texts[key] = key;
    EXPECT_TRUE(AddTo(dictionary, key, key));
  };
  while (dictionary.Count() < 100) {
    add(keys[dictionary.Count()]);
  }
  dictionary.Grow(kRoom);
  EXPECT_TRUE(Holds(dictionary, texts));
  while (dictionary.Count() < kRoom) {
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
  EXPECT_TRUE(Holds(dictionary, all)) << "with room for many more";
  dictionary.Grow(0);
  EXPECT_TRUE(Holds(dictionary, all)) << "with less room";
  for (const std::wstring& key : CollidingKeys()) {
    for (const std::wstring& neighbour : NeighboursOf(key)) {
      EXPECT_EQ(all.count(neighbour) == 0, FindIn(dictionary, neighbour) == nullptr);
    }
    EXPECT_FALSE(AddTo(dictionary, key, L"other"));
  }
}

TEST(Dictionary, FindsOthersBesideKeysWhoseHashesCollide) {
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

// ---- Memory that fails

struct Filling {
  const char* name;
  std::vector<std::wstring> before;
  std::wstring key;
  std::wstring text;
};

std::vector<Filling> Fillings() {
  const std::vector<std::wstring> full = OrdinaryKeys(kFewEntries);
  // Some of those that collide have no place, and there is room only for this many others.
  std::vector<std::wstring> fullBesideCollidingOnes = FirstCollidingKeys(2 * kFewEntries - 8);
  for (const std::wstring& key : OrdinaryKeys(8)) {
    fullBesideCollidingOnes.push_back(key);
  }
  return {
      {"the first entry", {}, L"menu.file", L"text"},
      {"one more", {L"menu.file"}, L"menu.file.open", std::wstring(5000, L'x')},
      {"one that is larger than a block", {L"menu.file"}, L"m", std::wstring(500'000, L'x')},
      {"a long key", {}, std::wstring(300, L'x'), L"text"},
      {"one more than there is room for", full, L"menu.file", L"text"},
      {"a key without a place", FirstCollidingKeys(100), CollidingKeys()[100], L"text"},
      {"one more beside keys without a place", fullBesideCollidingOnes, L"menu.file", L"text"},
  };
}

TEST(Dictionary, IsAsBeforeWhereMemoryFailsToAdd) {
  for (const Filling& filling : Fillings()) {
    const std::wstring& key = filling.key;
    const std::wstring& text = filling.text;
    const Texts before = TextsOf(filling.before);
    Texts after = before;
    after.emplace(filling.key, filling.text);
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message() << filling.name << ", allocation " << n);
      const LeakCheck everythingIsGivenBack;
      Dictionary dictionary;
      Fill(dictionary, before);
      bool added = false;
      const Outcome outcome =
          CallWithFailingAllocation(n, [&] { added = AddTo(dictionary, key, text); });
      ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
      if (outcome == Outcome::kNoFailure) {
        EXPECT_TRUE(added);
        EXPECT_TRUE(Holds(dictionary, after));
        EXPECT_GE(n, 2U) << "no allocation was tried";
        break;
      }
      EXPECT_TRUE(Holds(dictionary, before));
      EXPECT_EQ(FindIn(dictionary, filling.key), nullptr);
      EXPECT_TRUE(AddTo(dictionary, key, text));
      EXPECT_TRUE(Holds(dictionary, after));
    }
  }
}

// With less room the places of some are lost: each is then kept in memory of its own.
TEST(Dictionary, IsAsBeforeWhereMemoryFailsToReserve) {
  std::vector<std::wstring> keys = FirstCollidingKeys(56);
  for (const std::wstring& key : OrdinaryKeys(1000)) {
    const bool isNearTheFront = HashText(key) >> 60U == 0;
    if (isNearTheFront) {
      keys.push_back(key);
    }
  }
  const Texts texts = TextsOf(keys);
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    const LeakCheck everythingIsGivenBack;
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
      EXPECT_GT(n, 3U) << "no place was lost";
      break;
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
