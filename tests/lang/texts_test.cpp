// The texts of the tool in its languages. check_texts.py looks at the dictionaries themselves.
#include "lang/texts/texts.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace KelmoLibs::Lang {
namespace {

TEST(TextsTest, SayChoosesThePluralFormOfTheLanguage) {
  struct Row {
    const char* language;
    const char* number;
    const char* said;
  };
  const std::vector<Row> rows = {
      {"en", "0", "0 errors"},       {"en", "1", "1 error"},          {"en", "2", "2 errors"},
      {"en", "21", "21 errors"},     {"de", "1", u8"1 Warnung"},      {"de", "0", u8"0 Warnungen"},
      {"ru", "0", u8"0 ошибок"},     {"ru", "1", u8"1 ошибка"},       {"ru", "2", u8"2 ошибки"},
      {"ru", "4", u8"4 ошибки"},     {"ru", "5", u8"5 ошибок"},       {"ru", "10", u8"10 ошибок"},
      {"ru", "11", u8"11 ошибок"},   {"ru", "12", u8"12 ошибок"},     {"ru", "19", u8"19 ошибок"},
      {"ru", "20", u8"20 ошибок"},   {"ru", "21", u8"21 ошибка"},     {"ru", "101", u8"101 ошибка"},
      {"ru", "111", u8"111 ошибок"}, {"ru", "1003", u8"1003 ошибки"},
  };
  for (const Row& row : rows) {
    const std::string language = row.language;
    const std::string key = language == "de" ? "summary.warnings.#" : "summary.errors.#";
    EXPECT_EQ(Texts(language).Say({key, {row.number}}), row.said) << language << ' ' << row.number;
  }
}

TEST(TextsTest, SayPutsEachArgumentInItsPlaceOnce) {
  const Texts texts("en");
  EXPECT_EQ(texts.Say({"problem.line", {"%2", "why"}}), "kelmo-lang: error: %2: why");
  EXPECT_EQ(texts.Say({"problem.line", {"a"}}), "kelmo-lang: error: a: %2")
      << "an argument is missing";
  EXPECT_EQ(texts.Say({"no.text", {"a"}}), "no.text");
}

TEST(TextsTest, AnUnknownLanguageGivesEnglishTexts) {
  const Texts texts("xx");
  EXPECT_EQ(texts.Language(), "en");
  EXPECT_EQ(texts.Find("severity.note"), "note");
  EXPECT_EQ(Texts("de").Language(), "de");
  EXPECT_EQ(Texts("de").Find("severity.note"), "Hinweis");
}

TEST(TextsTest, ThereAreThreeLanguages) {
  EXPECT_EQ(TextLanguages(), (std::vector<std::string_view>{"de", "en", "ru"}));
}

}  // namespace
}  // namespace KelmoLibs::Lang
