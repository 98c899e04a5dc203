#include "host/view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/host/texts_of_tests.h"

namespace {

using KelmoLibs::Cldr::NumberFormat;
using KelmoLibs::Host::Argument;
using KelmoLibs::Host::FoundText;
using KelmoLibs::Host::MissingText;
using KelmoLibs::Host::PluralCount;
using KelmoLibs::Host::ProblemList;
using KelmoLibs::Host::TextCollection;
using KelmoLibs::Host::View;
using KelmoLibs::Host::ViewOptions;

// "language: text", or "nothing".
std::string Told(const FoundText& found) {
  return found.record != nullptr ? found.language->Id() + ": " + std::string(found.record->Text())
                                 : "nothing";
}

using Lines = std::vector<std::string>;

TEST(View, FindsTheFirstLanguageOfItsChain) {
  const TextCollection texts = LoadTexts({"en English\nok OK\nquit Quit\nhelp Help\n",
                                          "de Deutsch\nok Gut\nquit\n", "de-AT\nok Passt\n"});
  struct Case {
    const char* name;
    std::vector<std::string_view> chain;
    const char* key;
    const char* expected;
  };
  const std::vector<Case> cases = {
      {"the first language has it", {"de-AT", "de", "en"}, "ok", "de-AT: Passt"},
      {"an empty text is a text", {"de-AT", "de", "en"}, "quit", "de: "},
      {"the last language has it", {"de-AT", "de", "en"}, "help", "en: Help"},
      {"no language has it", {"de-AT", "de", "en"}, "other", "nothing"},
      {"no parent that is not named", {"de-AT"}, "help", "nothing"},
      {"an empty key", {"de"}, "", "nothing"},
      {"no language", {}, "ok", "nothing"},
      {"a language twice", {"de", "de"}, "ok", "de: Gut"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(Told(View(texts, ViewOf(row.chain), nullptr).Find(row.key)), row.expected)
        << row.name;
  }
}

TEST(View, WithoutTextsHasTheNumbersOfItsFirstKnownId) {
  struct Case {
    std::vector<std::string_view> chain;
    const char* decimalMark;
  };
  const TextCollection none;
  for (const Case& row : std::vector<Case>{{{"de"}, ","},
                                           {{"xx", "fr", "en"}, ","},
                                           {{"en", "de"}, "."},
                                           {{"xx"}, "."},
                                           {{}, "."}}) {
    EXPECT_EQ(View(none, ViewOf(row.chain), nullptr).Numbers().decimalMark, row.decimalMark);
  }
}

TEST(View, LeavesOutLanguagesThatTheTextsLack) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  ProblemList problems;
  const View view(texts, ViewOf({"fr", "DE", "de"}), &problems);
  EXPECT_EQ(Told(view.Find("ok")), "de: Gut");
  EXPECT_EQ(Printed(problems),
            (Lines{"warning: EL112. Dictionary not found: the texts have de (language \"fr\")",
                   "warning: EL112. Dictionary not found: the texts have de (language \"DE\")"}));
}

TEST(View, TellsThatItHasNoLanguage) {
  ProblemList problems;
  const TextCollection none = LoadTexts({});
  const TextCollection two = LoadTexts({"de\nok Gut\n", "en\nok OK\n"});
  const View first(none, ViewOf({}), &problems);
  const View second(two, ViewOf({"fr"}), &problems);
  EXPECT_EQ(Printed(problems),
            (Lines{"error: The view has no language: the texts have none",
                   "warning: EL112. Dictionary not found: the texts have de, en (language \"fr\")",
                   "error: The view has no language: the texts have de, en"}));
}

TEST(View, TellsAMissingKeyWithoutALanguage) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  const View view(texts, ViewOf({}), nullptr);
  ProblemList problems;
  view.TellMissing("ok", &problems);
  EXPECT_EQ(Printed(problems), Lines{"warning: EL121. Key not found in dictionary (key \"ok\")"});
}

TEST(View, TellsThatAMissingKeyHasForms) {
  const TextCollection texts = LoadTexts({"de\nn.one eins\nn.other viele\nm.one eins\n"});
  const View view(texts, ViewOf({"de"}), nullptr);
  ProblemList problems;
  view.TellMissing("n", &problems);
  view.TellMissing("m", &problems);
  EXPECT_EQ(Printed(problems),
            (Lines{"warning: EL121. Key not found in dictionary: it has plural forms, and no count "
                   "was given (key \"n\") (language \"de\")",
                   "warning: EL121. Key not found in dictionary (key \"m\") (language \"de\")"}));
}

TEST(View, FindsTheFormForANumber) {
  const TextCollection texts = LoadTexts(
      {"ru\nfiles.one one\nfiles.few few\nfiles.many many\nfiles.=0 none\nfiles.=1.5 exact\n"
       "only.few few\nbare bare\nhalf.other other\n",
       "en\nfiles.one one\nfiles.other other\nonly.other other\nbare.one one\nhalf.one one\n"});
  struct Case {
    const char* name;
    const char* key;
    double count;
    const char* expected;
  };
  const std::vector<Case> cases = {
      {"the exact number before the category", "files", 0, "ru: none"},
      {"an exact fraction", "files", 1.5, "ru: exact"},
      {"its category", "files", 21, "ru: one"},
      {"by the rules of its language", "files", 3, "ru: few"},
      {"no form for it: the next language", "files", 2.5, "en: other"},
      {"another form does not count", "only", 5, "en: other"},
      {"the key alone before the next language", "bare", 1, "ru: bare"},
      {"`other` before the key alone and the next language", "half", 1, "ru: other"},
      {"no language has a form", "none", 1, "nothing"},
      {"a number that is not finite has no exact form", "files", HUGE_VAL, "en: other"},
      {"a suffix is part of no key", "files.one", 1, "ru: one"},
  };
  const View view(texts, ViewOf({"ru", "en"}), nullptr);
  for (const Case& row : cases) {
    Argument count;
    count.value = row.count;
    EXPECT_EQ(Told(view.FindForm(row.key, PluralCount(count))), row.expected) << row.name;
  }
}

TEST(View, FindsFormsOfKeysOfEveryLength) {
  for (const std::size_t size : {0U, 1U, 7U, 220U, 255U, 256U, 257U, 300U, 5000U}) {
    const std::string key(size, 'k');
    const TextCollection texts = LoadTexts({"pl\n" + key + ".few few\n" + key + ".=7 seven\n"});
    const View view(texts, ViewOf({"pl"}), nullptr);
    Argument count;
    count.value = std::int64_t{3};
    EXPECT_EQ(Told(view.FindForm(key, PluralCount(count))), "pl: few") << size;
    count.value = std::int64_t{7};
    EXPECT_EQ(Told(view.FindForm(key, PluralCount(count))), "pl: seven") << size;
    count.value = 1e300;
    EXPECT_EQ(Told(view.FindForm(key, PluralCount(count))), "nothing") << size;
  }
}

TEST(View, SaysWhatStandsForAMissingKey) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  struct Case {
    MissingText missing;
    const char* expected;
  };
  for (const Case& row : {Case{MissingText::kKey, "menu.file"}, Case{MissingText::kNothing, ""},
                          Case{MissingText::kMarked, "[[menu.file]]"}}) {
    ViewOptions options = ViewOf({"de"});
    options.missing = row.missing;
    const View view(texts, options, nullptr);
    EXPECT_EQ(view.TextForMissing("menu.file"), row.expected);
  }
}

TEST(View, GivesTheSameMarkedFormAgain) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  ViewOptions options = ViewOf({"de"});
  options.missing = MissingText::kMarked;
  const View view(texts, options, nullptr);
  const char* const first = view.TextForMissing("menu.file").data();
  view.TextForMissing("menu.edit");
  EXPECT_EQ(view.TextForMissing("menu.file").data(), first);
}

TEST(View, KeepsTheMarkedFormsOfSoManyKeys) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  ViewOptions options = ViewOf({"de"});
  options.missing = MissingText::kMarked;
  const View view(texts, options, nullptr);
  constexpr int kKept = 4096;
  for (int i = 0; i < kKept; ++i) {
    const std::string key = std::to_string(i);
    ASSERT_EQ(view.TextForMissing(key), "[[" + key + "]]");
  }
  EXPECT_EQ(view.TextForMissing("one more"), "one more");
  EXPECT_EQ(view.TextForMissing("17"), "[[17]]");
}

TEST(View, RecordsMissingKeysUpToItsLimit) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  ViewOptions options = ViewOf({"de"});
  options.problemLimit = 2;
  const View view(texts, options, nullptr);
  for (const char* key : {"ok", "b", "a", "b", "c"}) {
    if (view.Find(key).record == nullptr) {
      view.TellMissing(key, nullptr);
    }
  }
  ProblemList problems;
  EXPECT_EQ(view.TakeProblems(&problems), 1U);
  EXPECT_EQ(Printed(problems),
            (Lines{"warning: EL121. Key not found in dictionary (key \"b\") (language \"de\")",
                   "warning: EL121. Key not found in dictionary (key \"a\") (language \"de\")"}));
}

TEST(View, RecordsKeysThatAreNotUtf8WithReplacements) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  ViewOptions options = ViewOf({"de"});
  options.problemLimit = 9;
  const View view(texts, options, nullptr);
  view.TellMissing("a\xFF\xC3z\xE2\x82", nullptr);
  ProblemList problems;
  view.TakeProblems(&problems);
  EXPECT_EQ(
      Printed(problems),
      (Lines{"warning: EL121. Key not found in dictionary (key \"a\uFFFD\uFFFDz\uFFFD\uFFFD\") "
             "(language \"de\")"}));
}

TEST(View, NamesAtMostTwentyLanguages) {
  std::vector<std::string> dictionaries;
  std::string named;
  for (char letter = 'a'; letter < 'a' + 21; ++letter) {
    dictionaries.push_back(std::string("x") + letter + "\n");
    named += letter < 'a' + 20 ? std::string("x") + letter + ", " : "...";
  }
  const TextCollection texts = LoadTexts(dictionaries);
  ProblemList problems;
  const View view(texts, ViewOf({"xa", "fr"}), &problems);
  EXPECT_EQ(Printed(problems), Lines{"warning: EL112. Dictionary not found: the texts have " +
                                     named + " (language \"fr\")"});
}

TEST(View, WithoutALimitRecordsNothing) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  const View view(texts, ViewOf({"de"}), nullptr);
  view.TellMissing("a", nullptr);
  view.Tell({}, nullptr);
  view.CountLost(nullptr);
  ProblemList problems;
  EXPECT_EQ(view.TakeProblems(&problems), 0U);
  EXPECT_EQ(Printed(problems), Lines());
}

TEST(View, CountsTheProblemsThatHadNoMemory) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  ViewOptions options = ViewOf({"de"});
  options.problemLimit = 2;
  const View view(texts, options, nullptr);
  ProblemList problems;
  view.CountLost(nullptr);
  view.CountLost(nullptr);
  view.CountLost(&problems);
  EXPECT_EQ(problems.Lost(), 1U);
  EXPECT_EQ(view.TakeProblems(&problems), 2U);
}

TEST(View, KeepsACopyOfItsNumberFormat) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n"});
  std::string mark = "::";
  NumberFormat format;
  format.decimalMark = mark;
  format.groupMark = "'";
  ViewOptions options = ViewOf({"de"});
  options.numbers = &format;
  const View view(texts, options, nullptr);
  mark = "xx";
  EXPECT_EQ(view.Numbers().decimalMark, "::");
  EXPECT_EQ(view.Numbers().groupMark, "'");
  EXPECT_EQ(view.Numbers().minusSign, "-");
}

TEST(View, WritesNumbersAsItsFirstLanguage) {
  const TextCollection texts = LoadTexts({"de\nok Gut\n", "tlh\nok maj\n"});
  struct Case {
    const char* name;
    std::vector<std::string_view> languages;
    std::string decimalMark;
  };
  const std::vector<Case> cases = {
      {"German", {"de", "en"}, ","},
      {"the first that the texts have", {"en", "de"}, ","},
      {"a first language without a known format", {"tlh", "de"}, "."},
      {"no language", {}, "."},
  };
  for (const Case& row : cases) {
    const View view(texts, ViewOf(row.languages), nullptr);
    EXPECT_EQ(view.Numbers().decimalMark, row.decimalMark) << row.name;
    EXPECT_FALSE(view.Numbers().isGrouped) << row.name;
  }
}

}  // namespace
