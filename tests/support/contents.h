// Fills dictionaries, and compares their whole contents.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/dictionary.h"

using Texts = std::map<std::wstring, std::wstring>;
using Contents = std::map<std::wstring, Texts>;

/// False if the dictionary has the key already.
inline bool AddTo(KelmoLibs::Localize::Dictionary& dictionary, std::wstring_view key,
                  std::wstring_view text) {
  wchar_t* const memory = dictionary.Add(key, text.size());
  if (memory != nullptr) {
    *std::copy(text.begin(), text.end(), memory) = L'\0';
  }
  return memory != nullptr;
}

inline void Fill(KelmoLibs::Localize::Dictionary& dictionary, const Texts& texts) {
  for (const auto& [key, text] : texts) {
    AddTo(dictionary, key, text);
  }
}

inline void Fill(KelmoLibs::Localize::DictionaryTable& table, const Contents& contents) {
  for (const auto& [id, texts] : contents) {
    Fill(table[id], texts);
  }
}

/// The text of `key`, or null.
inline const wchar_t* FindIn(const KelmoLibs::Localize::Dictionary& dictionary,
                             std::wstring_view key) {
  using namespace KelmoLibs::Localize;
  return dictionary.Find(KeyQuery<AnyLength>(key));
}

/// Whether `stored` equals `text`, also after a NUL inside it.
inline bool IsText(const wchar_t* stored, const std::wstring& text) {
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (stored[i] != text.c_str()[i]) {
      return false;
    }
  }
  return true;
}

/// Whether `dictionary` has these texts and no others.
inline testing::AssertionResult Holds(const KelmoLibs::Localize::Dictionary& dictionary,
                                      const Texts& texts) {
  for (const auto& [key, text] : texts) {
    const wchar_t* const stored = FindIn(dictionary, key);
    if (stored == nullptr) {
      return testing::AssertionFailure()
             << "the key " << testing::PrintToString(key) << " is missing";
    }
    if (!IsText(stored, text)) {
      return testing::AssertionFailure()
             << "the text of " << testing::PrintToString(key) << " is "
             << testing::PrintToString(stored) << " and not " << testing::PrintToString(text);
    }
  }
  if (dictionary.Count() != texts.size()) {
    return testing::AssertionFailure() << dictionary.Count() << " texts and not " << texts.size();
  }
  return testing::AssertionSuccess();
}

/// Whether `table` has these dictionaries and no others.
inline testing::AssertionResult Holds(const KelmoLibs::Localize::DictionaryTable& table,
                                      const Contents& contents) {
  for (const auto& [id, texts] : contents) {
    const auto dictionary = table.find(id);
    if (dictionary == table.end()) {
      return testing::AssertionFailure() << "no dictionary " << testing::PrintToString(id);
    }
    const testing::AssertionResult holds = Holds(dictionary->second, texts);
    if (!holds) {
      return testing::AssertionFailure()
             << "dictionary " << testing::PrintToString(id) << ": " << holds.message();
    }
  }
  if (table.size() != contents.size()) {
    return testing::AssertionFailure()
           << table.size() << " dictionaries and not " << contents.size();
  }
  return testing::AssertionSuccess();
}

/// The texts of `keys` in `table`. Fails the test if it has other keys.
inline Contents ContentsOf(const KelmoLibs::Localize::DictionaryTable& table,
                           const std::vector<std::wstring>& keys) {
  Contents contents;
  for (const auto& [id, dictionary] : table) {
    Texts& texts = contents[id];
    for (const std::wstring& key : keys) {
      if (const wchar_t* const text = FindIn(dictionary, key)) {
        texts[key] = text;
      }
    }
    EXPECT_EQ(texts.size(), dictionary.Count());
  }
  return contents;
}
