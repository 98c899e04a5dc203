#include "host/language_texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;
using KelmoLibs::Host::HashOfKey;
using KelmoLibs::Host::KeyBytes;
using KelmoLibs::Host::LanguageTexts;
using KelmoLibs::Host::NewText;
using KelmoLibs::Host::TextRecord;

NewText Entry(std::string_view key, std::string_view text, bool hasUtf16 = false) {
  return {key, text, 0, 1, hasUtf16, false, false};
}

const TextRecord* Find(const LanguageTexts& texts, std::string_view key) {
  return texts.Find(KeyBytes(key));
}

std::string KeyOfSize(std::size_t size, char last) {
  std::string key(size, 'k');
  if (size > 0) {
    key.back() = last;
  }
  return key;
}

TEST(LanguageTexts, FindsKeysOfEverySize) {
  constexpr std::size_t kLongest = 200;
  LanguageTexts texts("en");
  for (std::size_t size = 0; size <= kLongest; ++size) {
    EXPECT_EQ(Find(texts, KeyOfSize(size, 'a')), nullptr) << size;
    EXPECT_EQ(texts.Add(Entry(KeyOfSize(size, 'a'), std::to_string(size))), nullptr) << size;
  }
  for (std::size_t size = 0; size <= kLongest; ++size) {
    const TextRecord* const found = Find(texts, KeyOfSize(size, 'a'));
    ASSERT_NE(found, nullptr) << size;
    EXPECT_EQ(found, texts.Entries()[size]);
    EXPECT_EQ(found->Key(), KeyOfSize(size, 'a'));
    EXPECT_EQ(found->Text(), std::to_string(size));
    EXPECT_EQ(size > 0 ? Find(texts, KeyOfSize(size, 'b')) : nullptr, nullptr) << size;
  }
  EXPECT_EQ(Find(texts, KeyOfSize(kLongest + 1, 'a')), nullptr);
}

TEST(LanguageTexts, KeepsTheFirstTextOfAKey) {
  LanguageTexts texts("en");
  texts.SetName("English");
  EXPECT_EQ(texts.Add({"k", "first", 3, 7, false, true, true}), nullptr);
  EXPECT_EQ(texts.Add({"k", "other", 4, 8, true, false, true}), texts.Entries()[0]);
  EXPECT_EQ(texts.Entries()[0]->isOfProgram, 0U) << "only overrides have it";
  EXPECT_EQ(texts.Add({"k", "second", 4, 8, true, false, false}), texts.Entries()[0]);
  EXPECT_EQ(texts.Entries()[0]->isOfProgram, 1U);
  EXPECT_EQ(texts.Entries()[0]->isOverride, 1U);
  EXPECT_EQ(texts.Id(), "en");
  EXPECT_EQ(texts.Name(), "English");
  ASSERT_EQ(texts.Entries().size(), 1U);
  const TextRecord& entry = *texts.Entries().front();
  EXPECT_EQ(entry.Text(), "first");
  EXPECT_EQ(entry.file, 3U);
  EXPECT_EQ(entry.line, 7U);
  EXPECT_EQ(entry.hasPercent, 1U);
  EXPECT_EQ(entry.Utf16(), nullptr);
}

TEST(LanguageTexts, EndsKeysAndTextsWithAZero) {
  constexpr std::string_view kParts[] = {"", "a", "ab", "a\0b"sv, "\0"sv, "\xC3\xA4", "abcdefg"};
  LanguageTexts texts("en");
  for (const std::string_view key : kParts) {
    for (const std::string_view text : kParts) {
      const std::string unique = std::string(key) + std::to_string(texts.Entries().size());
      ASSERT_EQ(texts.Add(Entry(unique, text, true)), nullptr);
      const TextRecord& entry = *texts.Entries().back();
      EXPECT_EQ(entry.Key(), unique);
      EXPECT_EQ(*(entry.Key().data() + unique.size()), '\0');
      EXPECT_EQ(entry.Text(), text);
      EXPECT_EQ(*(entry.Text().data() + text.size()), '\0');
      ASSERT_NE(entry.Utf16(), nullptr);
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(entry.Utf16()) % alignof(std::uint16_t), 0U);
      EXPECT_EQ(entry.Utf16()[entry.utf16Size], 0U);
    }
  }
}

TEST(LanguageTexts, KeepsUtf16BesideTheText) {
  LanguageTexts texts("en");
  texts.Add(Entry("k", "a\0\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"sv, true));
  const TextRecord& entry = *texts.Entries().front();
  const std::vector<std::uint16_t> expected = {'a', 0, 0xE4, 0x20AC, 0xD83D, 0xDE00, 0};
  EXPECT_EQ(entry.utf16Size, 6U);
  EXPECT_EQ(std::vector<std::uint16_t>(entry.Utf16(), entry.Utf16() + 7), expected);
}

// All these keys have their home in the first buckets, which have room for 56 records: the others
// are in the overflow.
TEST(LanguageTexts, FindsKeysThatCollide) {
  constexpr std::size_t kKeys = 150;
  std::vector<std::string> keys;
  for (std::uint64_t i = 0; keys.size() < 2 * kKeys; ++i) {
    const std::string key = "collide." + std::to_string(i);
    if (HashOfKey(key) >> 52U == 0) {
      keys.push_back(key);
    }
  }
  LanguageTexts texts("en");
  for (std::size_t i = 0; i < kKeys; ++i) {
    ASSERT_EQ(texts.Add(Entry(keys[i], keys[i])), nullptr);
  }
  for (std::size_t i = 0; i < 2 * kKeys; ++i) {
    const TextRecord* const found = Find(texts, keys[i]);
    ASSERT_EQ(found, i < kKeys ? texts.Entries()[i] : nullptr) << keys[i];
    EXPECT_EQ(texts.Add(Entry(keys[i], "again")), found) << keys[i];
  }
}

}  // namespace
