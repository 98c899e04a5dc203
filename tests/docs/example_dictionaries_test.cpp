// The dictionaries of the examples, which translators copy: complete, without faults, and with the
// same keys in each language.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "dictionary/dictionary_loader.h"
#include "tests/support/contents.h"
#include "tests/support/read_file.h"
#include "text/file_path.h"
#include "text/utf8.h"

namespace KelmoLibs::Localize {
namespace {

std::wstring PathOf(const std::wstring& fileName) {
  return JoinPath(L"" KELMO_SOURCE_FOLDER "/examples/LANG", fileName);
}

std::set<std::wstring> KeysOf(const std::string& file) {
  std::set<std::wstring> keys;
  std::istringstream lines(ReadProjectFile(file));
  std::string line;
  std::getline(lines, line);  // the header
  while (std::getline(lines, line)) {
    if (!line.empty()) {
      keys.insert(DecodeUtf8(line.substr(0, line.find_first_of(" \t"))));
    }
  }
  return keys;
}

TEST(ExampleDictionaries, HaveTheSameKeysAndATextForEach) {
  CurrentLanguage currentLanguage;
  DictionaryTable dictionaries;
  ErrorList errors;
  const std::set<std::wstring> keys = KeysOf("examples/LANG/en.txt");
  EXPECT_GE(keys.size(), 300U);
  for (const wchar_t* const id : {L"en", L"de", L"ru"}) {
    SCOPED_TRACE(testing::PrintToString(id));
    ASSERT_EQ(LoadDictionaryFile(PathOf(std::wstring(id) + L".txt"), currentLanguage, dictionaries,
                                 errors),
              0);
    ASSERT_EQ(currentLanguage.id, id);
    EXPECT_EQ(dictionaries.at(id).Count(), keys.size());
    for (const std::wstring& key : keys) {
      const wchar_t* const text = FindIn(dictionaries.at(id), key);
      EXPECT_TRUE(text != nullptr && *text != L'\0') << testing::PrintToString(key);
    }
  }
}

TEST(ExampleDictionaries, FaultyDictionaryHasTheExpectedFaults) {
  CurrentLanguage currentLanguage;
  DictionaryTable dictionaries;
  ErrorList errors;
  const std::wstring path = PathOf(L"faulty.txt");
  ASSERT_EQ(LoadDictionaryFile(path, currentLanguage, dictionaries, errors), 2);
  EXPECT_EQ(errors.At(0), L"EL101. Key already declared.\nKey: plugin.title\nDictionary: " + path);
  EXPECT_EQ(errors.At(1), L"EL101. Key already declared.\nKey: plugin.stop\nDictionary: " + path);
  EXPECT_TRUE(
      Holds(dictionaries, {{L"plugin",
                            {{L"plugin.title", L"Flange calculator"},
                             {L"plugin.start", L"Start the calculation"},
                             {L"plugin.stop", L"Stop the calculation"},
                             {L"plugin.no_text", L""},
                             {L"plugin.note", L"This line was saved in another encoding: caf"}}}}));
}

}  // namespace
}  // namespace KelmoLibs::Localize
