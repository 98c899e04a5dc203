// What dictionaries hold, said and compared as a whole.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "dictionary/dictionary.h"
#include "tests/support/encode_utf8.h"

using Texts = std::map<std::wstring, std::wstring>;
using Contents = std::map<std::wstring, Texts>;

inline void Fill(KelmoLibs::Localize::Dictionary& dictionary, const Texts& texts) {
  for (const auto& [key, text] : texts) {
    dictionary.Add(EncodeUtf8(key), EncodeUtf8(text));
  }
}

inline void Fill(KelmoLibs::Localize::DictionaryTable& table, const Contents& contents) {
  for (const auto& [id, texts] : contents) {
    Fill(table[id], texts);
  }
}

/// Whether `stored` is `text`, also behind a NUL inside it.
inline bool IsText(const wchar_t* stored, const std::wstring& text) {
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (stored[i] != text.c_str()[i]) {
      return false;
    }
  }
  return true;
}

/// Whether `dictionary` holds these texts and no others.
inline testing::AssertionResult Holds(const KelmoLibs::Localize::Dictionary& dictionary,
                                      const Texts& texts) {
  for (const auto& [key, text] : texts) {
    const wchar_t* const stored = dictionary.Find(key).text;
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

/// Whether `table` holds these dictionaries and no others.
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

/// What `table` holds under `keys`, which must be all that it has.
inline Contents ContentsOf(const KelmoLibs::Localize::DictionaryTable& table,
                           const std::vector<std::wstring>& keys) {
  Contents contents;
  for (const auto& [id, dictionary] : table) {
    Texts& texts = contents[id];
    for (const std::wstring& key : keys) {
      if (const wchar_t* const text = dictionary.Find(key).text) {
        texts[key] = text;
      }
    }
    EXPECT_EQ(texts.size(), dictionary.Count());
  }
  return contents;
}
