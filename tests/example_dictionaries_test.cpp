// The dictionaries of the examples are what translators copy: whole, without a fault, and the same
// keys in each language.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "dictionary/dictionary_loader.h"
#include "frame/file_path.h"
#include "frame/utf8.h"

namespace KelmoLibs::Localize {
namespace {

std::wstring PathOf(const std::wstring& fileName) {
  return JoinPath(DecodeUtf8(KELMO_SOURCE_FOLDER "/examples/LANG"), fileName);
}

TEST(ExampleDictionaries, HaveTheSameKeysAndATextForEach) {
  std::wstring currentLanguage;
  DictionaryTable dictionaries;
  ErrorList errors;
  std::set<std::wstring> englishKeys;
  for (const wchar_t* const id : {L"en", L"de", L"ru"}) {
    SCOPED_TRACE(testing::PrintToString(id));
    ASSERT_EQ(LoadDictionaryFile(PathOf(std::wstring(id) + L".txt"), currentLanguage, dictionaries,
                                 errors),
              0);
    ASSERT_EQ(currentLanguage, id);
    std::set<std::wstring> keys;
    for (const auto& [key, text] : dictionaries.at(id)) {
      EXPECT_FALSE(text.empty()) << testing::PrintToString(key);
      keys.insert(key);
    }
    EXPECT_GE(keys.size(), 300U);
    if (englishKeys.empty()) {
      englishKeys = keys;
    }
    EXPECT_EQ(keys, englishKeys);
  }
}

TEST(ExampleDictionaries, TheFaultyOneHasItsFaults) {
  std::wstring currentLanguage;
  DictionaryTable dictionaries;
  ErrorList errors;
  const std::wstring path = PathOf(L"faulty.txt");
  ASSERT_EQ(LoadDictionaryFile(path, currentLanguage, dictionaries, errors), 2);
  EXPECT_EQ(errors.At(0), L"EL101. Key already declared.\nKey: plugin.title\nDictionary: " + path);
  EXPECT_EQ(errors.At(1), L"EL101. Key already declared.\nKey: plugin.stop\nDictionary: " + path);
  EXPECT_EQ(
      dictionaries,
      (DictionaryTable{{L"plugin",
                        {{L"plugin.title", L"Flange calculator"},
                         {L"plugin.start", L"Start the calculation"},
                         {L"plugin.stop", L"Stop the calculation"},
                         {L"plugin.no_text", L""},
                         {L"plugin.note", L"This line was saved in another encoding: caf"}}}}));
}

}  // namespace
}  // namespace KelmoLibs::Localize
