#include "host/language_match.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/host/texts_of_tests.h"

namespace {

using KelmoLibs::Host::MatchLanguage;
using KelmoLibs::Host::TextCollection;

TEST(MatchLanguage, LeavesOutPartsFromTheEndButNoScript) {
  struct Case {
    const char* name;
    std::vector<std::string> loaded;
    const char* wanted;
    std::vector<std::string> expected;  // by rank
  };
  const std::vector<Case> cases = {
      {"the same", {"en", "de"}, "de", {"de"}},
      {"the region left out", {"en", "de"}, "de-AT", {"de"}},
      {"the region if it is there", {"de", "de-AT"}, "de-AT", {"de-AT", "de"}},
      {"not another region", {"de-CH"}, "de-AT", {}},
      {"not a region that nobody named", {"de-AT"}, "de", {}},
      {"large letters and underscores", {"pt_br"}, "PT-BR", {"pt_br"}},
      {"large letters in the dictionary", {"DE"}, "de_AT", {"DE"}},
      {"the first of two", {"DE", "de"}, "de", {"DE"}},
      {"several parts", {"sr-Latn"}, "sr-Latn-RS-x", {"sr-Latn"}},
      {"a script is not left out", {"sr"}, "sr-Latn", {}},
      {"nor behind a region", {"zh"}, "zh-Hant-TW", {}},
      {"a region of traditional Chinese", {"zh", "zh-Hant"}, "zh-TW", {"zh-Hant"}},
      {"Hong Kong", {"zh", "zh-Hant"}, "zh_hk", {"zh-Hant"}},
      {"Macau", {"zh-Hant", "zh"}, "zh-MO", {"zh-Hant"}},
      {"a region behind the script", {"zh", "zh-Hant"}, "zh-Hant-HK", {"zh-Hant"}},
      {"the first letter and the last", {"AZ"}, "az", {"AZ"}},
      {"the character in front of the letters", {"@"}, "`", {}},
      {"the character behind the letters", {"["}, "{", {}},
      {"the region itself", {"zh-Hant", "zh-HK"}, "zh-HK", {"zh-HK", "zh-Hant"}},
      {"no traditional Chinese", {"zh"}, "zh-MO", {}},
      {"simplified Chinese", {"zh"}, "zh-CN", {"zh"}},
      {"a variant of four characters", {"de"}, "de-1996", {"de"}},
      {"nothing wanted", {"de"}, "", {}},
      {"only a mark", {"de"}, "-", {}},
      {"nothing loaded", {}, "de", {}},
      {"extensions are no scripts", {"ar", "ar-EG"}, "ar-EG-u-nu-latn", {"ar-EG", "ar"}},
      {"an extension of one part", {"de"}, "de-x-abcd", {"de"}},
      {"the extension itself", {"de", "de-x-abcd"}, "de-x-abcd", {"de-x-abcd", "de"}},
      {"a mark behind the extension", {"de"}, "de-x-", {"de"}},
      {"a language of one letter", {"x"}, "x-y", {"x"}},
      {"all parts", {"de", "de-AT-x", "de-AT"}, "de-AT-x", {"de-AT-x", "de-AT", "de"}},
      {"a part that is not there", {"de", "de-AT-x"}, "de-AT-x", {"de-AT-x", "de"}},
      {"a language with four letters has no script", {"This"}, "this", {"This"}},
  };
  for (const Case& row : cases) {
    std::vector<std::string> dictionaries;
    for (const std::string& id : row.loaded) {
      dictionaries.push_back(id + "\nk t\n");
    }
    const TextCollection texts = LoadTexts(dictionaries);
    std::vector<std::string> found;
    while (const auto index = MatchLanguage(texts, row.wanted, found.size())) {
      found.push_back(texts.languages[*index]->Id());
    }
    EXPECT_EQ(found, row.expected) << row.name;
  }
}

TEST(MatchLanguage, LeavesOutAVariantWithAnyDigit) {
  const TextCollection texts = LoadTexts({"de\nk t\n"});
  for (const char digit : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9'}) {
    EXPECT_TRUE(MatchLanguage(texts, std::string("de-abc") + digit, 0)) << digit;
    EXPECT_TRUE(MatchLanguage(texts, std::string("de-") + digit + "abc", 0)) << digit;
  }
}

// A copy of the loaded id for each part of the wanted one would take minutes.
TEST(MatchLanguage, TakesAMomentForVeryLongIds) {
  constexpr std::size_t kMegabyte = 1 << 20;
  const TextCollection texts = LoadTexts({std::string(kMegabyte, 'x') + "\nk t\n"});
  std::string wanted(kMegabyte, 'y');
  for (std::size_t i = 1; i < kMegabyte; i += 2) {
    wanted[i] = '-';
  }
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(MatchLanguage(texts, wanted, 0));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

}  // namespace
