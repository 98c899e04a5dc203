#include "dictionary/key.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

// A stored key in memory of exactly its size.
class KeyInMemory {
 public:
  explicit KeyInMemory(std::wstring_view text) : memory_(new std::byte[StoredKey(text).Bytes()]) {
    key_ = StoredKey(text).ConstructAt(memory_.get(), text);
  }

  const StoredKey& operator*() const { return *key_; }

 private:
  std::unique_ptr<std::byte[]> memory_;
  const StoredKey* key_ = nullptr;
};

std::wstring RandomText(RandomNumbers& random, std::size_t length, char32_t first, int count) {
  std::wstring text;
  while (text.size() < length) {
    text += static_cast<wchar_t>(first + static_cast<char32_t>(random.Below(count)));
  }
  return text;
}

// Texts of all lengths and stored forms. Some differ in one character only.
std::vector<std::wstring> ManyTexts() {
  RandomNumbers random(randomSeed);
  std::vector<std::wstring> texts = {L""};
  for (std::size_t length = 1; length <= 70; ++length) {
    const std::wstring ascii = RandomText(random, length, 'a', 26);
    texts.push_back(ascii);
    for (const wchar_t other :
         {L'\0', L'\x80', L'\u00FF', L'\u0100', L'\u0161', L'\u0424', L'\uFFFF'}) {
      for (const std::size_t offset : {std::size_t{0}, length / 2, length - 1}) {
        texts.push_back(ascii);
        texts.back()[offset] = other;
      }
    }
    texts.push_back(RandomText(random, length, 0x430, 32));
    texts.push_back(RandomText(random, length, 0x4E00, 5000));
    if (sizeof(wchar_t) == 4) {
      for (const std::uint32_t other : {0x10061U, 0x1F600U, 0x110000U, 0x80000061U, 0xFFFFFFFFU}) {
        texts.push_back(ascii);
        texts.back()[length / 2] = static_cast<wchar_t>(other);
      }
    }
  }
  return texts;
}

bool Matches(const std::wstring& text, const StoredKey& key) {
  return KeyQuery<AnyLength>(text).Matches(key);
}

TEST(Key, MatchesItsTextOnly) {
  const std::vector<std::wstring> texts = ManyTexts();
  for (const std::wstring& text : texts) {
    const KeyInMemory stored(text);
    for (const std::wstring& other : texts) {
      if (text.size() == other.size()) {
        ASSERT_EQ(Matches(other, *stored), text == other)
            << testing::PrintToString(text) << ", " << testing::PrintToString(other);
      }
    }
    EXPECT_FALSE(Matches(text + L'x', *stored));
    EXPECT_FALSE(Matches(text + L'\0', *stored));
  }
}

TEST(Key, HasTheHashOfItsText) {
  for (const std::wstring& text : ManyTexts()) {
    EXPECT_EQ(KeyQuery<AnyLength>(text).Hash(), HashText(text)) << testing::PrintToString(text);
    EXPECT_EQ((*KeyInMemory(text)).Hash(), HashText(text)) << testing::PrintToString(text);
  }
}

TEST(Key, UsesTheFewestBytesPerCharacter) {
  constexpr std::size_t kWide = sizeof(wchar_t);
  const struct {
    const char* name;
    std::wstring text;
    std::size_t bytes;  // of the characters
  } rows[] = {
      {"nothing", L"", 0},
      {"ASCII", L"menu", 4},
      {"ASCII that does not end with a wide character", L"menu.", kWide == 2 ? 6 : 8},
      {"the first with one byte", L"men\u0001", 4},
      {"the last with one byte", L"men\u00FE", 4},
      {"U+00FF, to which other characters saturate", L"men\u00FF", 8},
      {"the first with two bytes", L"men\u0100", 8},
      {"the last with two bytes", L"\uFFFEmenu.file", 20},
      {"NUL", std::wstring(L"me\0u", 4), 4 * kWide},
      {"a hundred characters", std::wstring(100, L'x'), 100},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const StoredKey key(row.text);
    EXPECT_EQ(key.Length(), row.text.size());
    EXPECT_EQ(key.Bytes(), sizeof(StoredKey) + row.bytes);
  }
  const std::wstring beyond = L"menu.\U0001F600";
  EXPECT_EQ(StoredKey(beyond).Bytes(), sizeof(StoredKey) + beyond.size() * kWide);
}

// A set of keys needs one order, whether the right key is stored or searched for.
TEST(Key, IsTotallyOrdered) {
  std::vector<std::wstring> texts = ManyTexts();
  RandomNumbers random(randomSeed);
  const auto sign = [](int order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
  for (int round = 0; round < 20'000; ++round) {
    const std::wstring& first = AnyOf(random, texts);
    const std::wstring& second = AnyOf(random, texts);
    const std::wstring& third = AnyOf(random, texts);
    const KeyInMemory left(first);
    const KeyInMemory middle(second);
    const KeyInMemory right(third);
    const int order = sign(Compare(*left, *middle));
    ASSERT_EQ(order == 0, first == second);
    ASSERT_EQ(sign(Compare(*middle, *left)), -order);
    ASSERT_EQ(sign(Compare(*left, std::wstring_view(second))), order)
        << testing::PrintToString(first) << ", " << testing::PrintToString(second);
    if (order < 0 && Compare(*middle, *right) < 0) {
      ASSERT_LT(Compare(*left, *right), 0);
    }
  }
}

template <class Texts>
void ExpectAsKeyOfAnyLength(const std::wstring& text, const std::vector<std::wstring>& others) {
  SCOPED_TRACE(testing::PrintToString(text));
  const KeyQuery<Texts> key(text);
  ASSERT_EQ(key.Hash(), HashText(text));
  ASSERT_EQ(key.SortKey(), text);
  for (const std::wstring& other : others) {
    if (other.size() == text.size() || other.size() == text.size() + 1) {
      ASSERT_EQ(key.Matches(*KeyInMemory(other)), text == other) << testing::PrintToString(other);
    }
  }
}

TEST(Key, OfEachLengthClassEqualsAKeyOfAnyLength) {
  const std::vector<std::wstring> texts = ManyTexts();
  for (const std::wstring& text : texts) {
    if (text.size() <= UpTo3::kMaxLength) {
      ExpectAsKeyOfAnyLength<UpTo3>(text, texts);
    } else if (text.size() <= From4To8::kMaxLength) {
      ExpectAsKeyOfAnyLength<From4To8>(text, texts);
    } else if (text.size() <= From9To16::kMaxLength) {
      ExpectAsKeyOfAnyLength<From9To16>(text, texts);
    } else if (text.size() <= From17To32::kMaxLength) {
      ExpectAsKeyOfAnyLength<From17To32>(text, texts);
    } else {
      ExpectAsKeyOfAnyLength<AtLeast16>(text, texts);
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
