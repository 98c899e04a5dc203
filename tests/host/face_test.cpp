// The C++ face over the built file, as a host uses it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <kelmo/kelmo.hpp>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace {

kelmo::Texts Load(const std::vector<std::string>& dictionaries,
                  const kelmo::LoadOptions& options = {}) {
  kelmo::Loader loader;
  for (const std::string& bytes : dictionaries) {
    loader.add_memory(bytes, bytes.substr(0, bytes.find_first_of(" \n")) + ".txt", options);
  }
  return loader.finish();
}

const char kGerman[] =
    "de Deutsch\nhello Hallo {name}!\nfiles.one {0} Datei\nfiles.other {0} Dateien\nempty\n"
    "sum {0} + {1} = {2}\nprice {0:.2f} EUR\nlong {0}{0}{0}{0}\n";
const char kEnglish[] = "en English\nhello Hello {name}!\nquit Quit\n";

TEST(KelmoFace, TranslatesWithTheFirstLanguageThatHasTheKey) {
  const kelmo::View view(Load({kGerman, kEnglish}), {"de", "en"});
  EXPECT_EQ(view.tr("quit"), "Quit");
  EXPECT_EQ(view.tr("empty"), "");
  EXPECT_EQ(view.tr("hello"), "Hallo {name}!");
  EXPECT_EQ(view.tr("no such key"), "no such key");
  EXPECT_EQ(view.tr(""), "");
  EXPECT_EQ(view.tr(std::string_view("quitter", 4)), "Quit");
}

TEST(KelmoFace, FillsArgumentsOfAllTypes) {
  const kelmo::View view(Load({kGerman, kEnglish}), {"de", "en"});
  const std::string name = "Bert";
  const char* const none = nullptr;
  EXPECT_EQ(view.tr("hello", kelmo::arg("name", "Anna")), "Hallo Anna!");
  EXPECT_EQ(view.tr("hello", kelmo::arg("name", name)), "Hallo Bert!");
  EXPECT_EQ(view.tr("hello", kelmo::arg("name", std::string_view(name).substr(1))), "Hallo ert!");
  EXPECT_EQ(view.tr("hello", kelmo::arg("name", none)), "Hallo !");
  EXPECT_EQ(view.tr("hello", kelmo::arg("name", 7)), "Hallo 7!");
  EXPECT_EQ(view.tr("sum", static_cast<short>(-1), 18446744073709551615ULL, 2.5F),
            "-1 + 18446744073709551615 = 2,5");
  EXPECT_EQ(view.tr("price", 3.14159), "3,14 EUR");
  EXPECT_EQ(view.tr("sum", kelmo::number(1, 2), 0L, 1e9), "1,00 + 0 = 1000000000");
  EXPECT_EQ(view.tr("long", std::string(300, 'x')), std::string(1200, 'x'));
}

TEST(KelmoFace, ChoosesThePluralForm) {
  const kelmo::View view(Load({kGerman, kEnglish}), {"de", "en"});
  EXPECT_EQ(view.tr("files", kelmo::count(1)), "1 Datei");
  EXPECT_EQ(view.tr("files", kelmo::count(5U)), "5 Dateien");
  EXPECT_EQ(view.tr("files", kelmo::count(1.0, 1)), "1,0 Dateien");
  EXPECT_EQ(view.tr("files", kelmo::arg("n", kelmo::count(1))), "1 Datei");
  EXPECT_EQ(view.tr("files", 1), "files");
}

TEST(KelmoFace, FindsTextsWithTheirOrigin) {
  kelmo::LoadOptions options;
  options.utf16 = true;
  const kelmo::View view(Load({"de Deutsch\nok Schön\nn.one eins\n"}, options), {"de"});
  const auto found = view.find("ok");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->text, "Schön");
  EXPECT_EQ(found->utf16, u"Schön");
  EXPECT_EQ(found->key, "ok");
  EXPECT_EQ(found->language, "de");
  EXPECT_EQ(found->file, "de.txt");
  EXPECT_EQ(found->line, 2U);
  EXPECT_FALSE(view.find("no"));
  EXPECT_EQ(view.find("n", kelmo::count(1))->key, "n.one");
  EXPECT_FALSE(view.find("n", kelmo::count(2)));
}

TEST(KelmoFace, GivesRangesOverLanguagesAndEntries) {
  const kelmo::Texts texts = Load({kGerman, kEnglish});
  std::vector<std::string> languages;
  for (const kelmo::Language language : texts.languages()) {
    languages.push_back(std::string(language.id) + "=" + std::string(language.name) + " " +
                        std::to_string(language.entry_count));
  }
  EXPECT_EQ(languages, (std::vector<std::string>{"de=Deutsch 7", "en=English 2"}));
  std::vector<std::string> keys;
  for (const kelmo::Text entry : texts.entries(1)) {
    keys.emplace_back(entry.key);
  }
  EXPECT_EQ(keys, (std::vector<std::string>{"hello", "quit"}));
  const auto found = texts.languages();
  EXPECT_TRUE(std::any_of(found.begin(), found.end(),
                          [](const kelmo::Language& language) { return language.id == "en"; }));
  EXPECT_THROW(texts.entries(2), std::out_of_range);
  EXPECT_THROW(texts.languages().at(2), std::out_of_range);
}

TEST(KelmoFace, KeepsTextsAliveAsLongAsAnyoneNeedsThem) {
  kelmo::View view;
  EXPECT_EQ(view.tr("ok"), "");
  EXPECT_EQ(view.tr("ok", 1), "");
  EXPECT_FALSE(view.find("ok"));
  {
    const kelmo::View first(Load({kGerman}), {"de"});
    view = first;
  }
  const kelmo::Texts texts = view.texts();
  const std::string_view text = view.find("hello")->text;
  view = kelmo::View();
  EXPECT_EQ(text, "Hallo {name}!");
  EXPECT_EQ(texts.languages().size(), 1U);
  kelmo::View moved(texts, {"de"});
  const kelmo::View target = std::move(moved);
  EXPECT_EQ(target.tr("hello"), "Hallo {name}!");
}

TEST(KelmoFace, ThrowsOrTellsWhatCannotBeRead) {
  kelmo::Loader loader;
  try {
    loader.add_file("no such file");
    ADD_FAILURE() << "no exception";
  } catch (const kelmo::Error& error) {
    EXPECT_EQ(error.status(), KELMO_CANNOT_READ);
    EXPECT_EQ(std::string(error.what()).substr(0, 55),
              "no such file: error: EL111. Dictionary file not found: ");
  }
  EXPECT_THROW(loader.add_folder("no such folder"), kelmo::Error);
  kelmo::Problems problems;
  EXPECT_FALSE(loader.add_file("no such file", problems));
  EXPECT_FALSE(loader.add_folder("no such folder", problems));
  ASSERT_EQ(problems.size(), 2U);
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_CANNOT_READ);
  EXPECT_EQ(problems.at(1).file, "no such folder");
  EXPECT_THROW(loader.add_file("\xFF", problems), kelmo::Error);
}

TEST(KelmoFace, ReadsFilesAndFolders) {
  const ScratchFolder folder;
  folder.Write(L"en.txt", kEnglish);
  folder.Write(L"own.txt", "en\nquit Leave\nquit Again\n");
  folder.Write(L"en-val.txt", "1 m\n");
  kelmo::Problems problems;
  kelmo::Loader loader;
  EXPECT_TRUE(loader.add_file(folder.Path() / "own.txt", problems));
  EXPECT_TRUE(loader.add_folder(folder.Path(), problems));
  const kelmo::View view(loader.finish(), {"en"});
  EXPECT_EQ(view.tr("quit"), "Leave");
  EXPECT_EQ(view.tr("hello"), "Hello {name}!");
  EXPECT_EQ(problems.size(), 4U);
}

TEST(KelmoFace, GivesProblemsAsValues) {
  kelmo::Problems problems;
  EXPECT_TRUE(problems.empty());
  kelmo::ViewOptions options;
  options.languages = {"fr", "de"};
  options.problem_limit = 1;
  options.missing = kelmo::Missing::marked;
  const kelmo::View view(Load({kGerman}), options, problems);
  EXPECT_EQ(view.tr("no"), "[[no]]");
  EXPECT_EQ(view.tr("no too", 1), "[[no too]]");
  EXPECT_EQ(view.take_problems(problems), 1U);
  ASSERT_EQ(problems.size(), 2U);
  const kelmo::Problem last = problems.at(1);
  EXPECT_EQ(last.code, KELMO_PROBLEM_KEY_MISSING);
  EXPECT_EQ(last.severity, kelmo::Severity::warning);
  EXPECT_EQ(last.key, "no");
  EXPECT_EQ(last.language, "de");
  EXPECT_EQ(last.text,
            "warning: EL121. Key not found in dictionary (key \"no\") (language \"de\")");
  EXPECT_EQ(last.sentence, "EL121. Key not found in dictionary");
  std::vector<std::int32_t> codes;
  for (const kelmo::Problem& problem : problems) {
    codes.push_back(problem.code);
  }
  EXPECT_EQ(codes,
            (std::vector<std::int32_t>{KELMO_PROBLEM_UNKNOWN_LANGUAGE, KELMO_PROBLEM_KEY_MISSING}));
  EXPECT_EQ(problems.lost(), 0U);
  EXPECT_THROW(problems.at(2), std::out_of_range);
  problems.clear();
  EXPECT_TRUE(problems.begin() == problems.end());
}

TEST(KelmoFace, GivesNothingForListsThatWereMovedFrom) {
  kelmo::Problems problems;
  const kelmo::Problems target = std::move(problems);
  EXPECT_EQ(problems.size(), 0U);  // NOLINT(bugprone-use-after-move): it is allowed
  EXPECT_TRUE(problems.begin() == problems.end());
  EXPECT_TRUE(target.empty());
}

TEST(KelmoFace, RefusesDecimalsThatNoNumberHas) {
  EXPECT_THROW(kelmo::number(1, -1), kelmo::Error);
  EXPECT_THROW(kelmo::count(1.0, 100), kelmo::Error);
  EXPECT_NO_THROW(kelmo::number(1, KELMO_MAX_DECIMALS));
}

TEST(KelmoFace, RefusesArgumentsThatCompileAndAreNotAllowed) {
  const kelmo::View view(Load({kGerman}), {"de"});
  const kelmo::Argument one = kelmo::count(1);
  const kelmo::Count text(kelmo::Argument("one"));
  EXPECT_THROW(view.tr("files", one, one), kelmo::Error);
  EXPECT_THROW(view.tr("files", text), kelmo::Error);
  EXPECT_FALSE(view.find("files", text));
  EXPECT_THROW(view.tr("hello", kelmo::Argument(kelmo_number_argument(1, -2))), kelmo::Error);
  EXPECT_EQ(view.tr("files", one), "1 Datei");
}

TEST(KelmoFace, RefusesViewsOfWhatIsNotAllowed) {
  const kelmo::Texts texts = Load({kGerman});
  kelmo::ViewOptions options;
  options.numbers = kelmo::NumberFormat();
  options.numbers->is_grouped = 2;
  EXPECT_THROW(kelmo::View(texts, options), kelmo::Error);
  EXPECT_THROW(kelmo::View(texts, {"\xFF"}), kelmo::Error);
  EXPECT_THROW(kelmo::View(kelmo::Texts(), {"de"}), kelmo::Error);
}

TEST(KelmoFace, RefusesToUseALoaderThatWasMovedFrom) {
  kelmo::Loader loader;
  kelmo::Loader target = std::move(loader);
  // NOLINTBEGIN(bugprone-use-after-move): it is allowed
  EXPECT_THROW(loader.add_memory("en\n", "en.txt"), kelmo::Error);
  EXPECT_THROW(loader.finish(), kelmo::Error);
  // NOLINTEND(bugprone-use-after-move)
  EXPECT_TRUE(target.finish().languages().empty());
}

TEST(KelmoFace, WritesAFloatWithTheDigitsOfAFloat) {
  const kelmo::View view(Load({"en\nn {0}\ns {0} {0:.3f}\nw.one one\nw.other other\n"}), {"en"});
  EXPECT_EQ(view.tr("n", 0.1F), "0.1");
  EXPECT_EQ(view.tr("n", 0.1), "0.1");
  EXPECT_EQ(view.tr("n", static_cast<double>(0.1F)), "0.10000000149011612");
  EXPECT_EQ(view.tr("n", 16777216.0F), "16777216");
  EXPECT_EQ(view.tr("n", 524288.875F), "524288.9");
  EXPECT_EQ(view.tr("n", 2097152.25F), "2097152.2");
  EXPECT_EQ(view.tr("n", 0.0F), "0");
  EXPECT_EQ(view.tr("s", 3.3333333F), "3.3333333 3.333");
  EXPECT_EQ(view.tr("w", kelmo::count(1.0F)), "one");
  EXPECT_EQ(view.tr("w", kelmo::count(0.1F)), "other");
}

TEST(KelmoFace, TellsEachProblemOfALongTextOnce) {
  kelmo::ViewOptions options;
  options.languages = {"en"};
  options.problem_limit = 1;
  const kelmo::View view(Load({"en\nn {0} {7}\nm {8}\n"}), options);
  EXPECT_EQ(view.tr("m", 1), "{8}");
  EXPECT_EQ(view.tr("n", std::string(300, 'x')), std::string(300, 'x') + " {7}");
  const std::string missing(300, 'k');
  EXPECT_EQ(view.tr(missing, 1), missing);
  kelmo::Problems problems;
  EXPECT_EQ(view.take_problems(problems), 2U);
  EXPECT_EQ(problems.size(), 1U);
}

TEST(KelmoFace, MatchesTheLanguagesOfTheUser) {
  const kelmo::Texts texts = Load({kGerman, kEnglish});
  ASSERT_EQ(texts.match("de-AT").size(), 1U);
  EXPECT_EQ(texts.match("de-AT").front().id, "de");
  EXPECT_EQ(texts.match("en").front().name, "English");
  EXPECT_TRUE(texts.match("fr").empty());
  EXPECT_TRUE(kelmo::Texts().match("fr").empty());
  const kelmo::Texts austrian = Load({"de-AT \u00D6sterreich\nk t\n", kGerman});
  ASSERT_EQ(austrian.match("de_at").size(), 2U);
  EXPECT_EQ(austrian.match("de_at").front().id, "de-AT");
  EXPECT_EQ(austrian.match("de_at").back().id, "de");
  const std::vector<std::string> languages = kelmo::languages_for_user(texts, "en");
  EXPECT_EQ(std::count(languages.begin(), languages.end(), "en"), 1);
}

TEST(KelmoFace, HasANumberFormatThatIsReady) {
  kelmo::NumberFormat format;
  EXPECT_EQ(kelmo::print(-1234.5, format), "-1234.5");
  format.is_grouped = 1;
  EXPECT_EQ(kelmo::print(1234, format), "1,234");
  format.size = 0;
  EXPECT_THROW(kelmo::print(1, format), kelmo::Error);
  EXPECT_THROW(kelmo::print("one", kelmo::NumberFormat()), kelmo::Error);
  EXPECT_EQ(kelmo::print(1.5, *kelmo::number_format_of_language("de")), "1,5");
  EXPECT_FALSE(kelmo::number_format_of_language("none"));
  const auto ofUser = kelmo::number_format_of_user();
  EXPECT_TRUE(!ofUser || ofUser->decimal_mark[0] != '\0');
}

TEST(KelmoFace, TellsLanguagesThatTheTextsLack) {
  kelmo::Problems problems;
  const kelmo::View view(Load({kGerman}), {"fr", "de"}, problems);
  EXPECT_EQ(view.tr("empty"), "");
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_UNKNOWN_LANGUAGE);
}

TEST(KelmoFace, GivesItsHandleToTheFunctionsOfC) {
  const kelmo::View view(Load({kEnglish}), {"en"});
  EXPECT_STREQ(kelmo_view_text(view.handle(), "quit", KELMO_ZERO_TERMINATED, nullptr), "Quit");
  EXPECT_EQ(kelmo::View().handle(), nullptr);
}

TEST(KelmoFace, LoadsWhatACustomerMayHave) {
  const ScratchFolder folder;
  kelmo::LoadOptions own;
  own.is_override = true;
  own.optional = true;
  kelmo::Problems problems;
  kelmo::Loader loader;
  EXPECT_TRUE(loader.add_folder(folder.Path() / "none", problems, own));
  EXPECT_TRUE(loader.add_file(folder.Path() / "none.txt", problems, own));
  EXPECT_NO_THROW(loader.add_file(folder.Path() / "none.txt", own));
  loader.add_memory("en\nquit Leave\n", "own", problems, own);
  loader.add_memory(kEnglish, "en.txt", problems);
  EXPECT_TRUE(problems.empty());
  EXPECT_TRUE(loader.add_folder(folder.Path(), problems));
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_EMPTY_FOLDER);
  const kelmo::View view(loader.finish(), {"en"});
  EXPECT_EQ(view.tr("quit"), "Leave");
  EXPECT_EQ(view.find("hello")->file, "en.txt");
  EXPECT_THROW(loader.add_folder(folder.Path() / "none"), kelmo::Error);
}

TEST(KelmoFace, ListsTheLanguagesOfTheProgramInFrontOfThoseOfACustomer) {
  kelmo::LoadOptions own;
  own.is_override = true;
  kelmo::Loader loader;
  loader.add_memory("fr Fran\u00E7ais\nquit Sortir\n", "own/fr.txt", own);
  loader.add_memory("en Ours\nquit Leave\n", "own/en.txt", own);
  loader.add_memory(kGerman, "de.txt");
  loader.add_memory(kEnglish, "en.txt");
  const kelmo::Texts texts = loader.finish();
  std::vector<std::string> menu;
  for (const kelmo::Language language : texts.languages()) {
    menu.push_back(std::string(language.id) + "=" + std::string(language.name));
  }
  EXPECT_EQ(menu, (std::vector<std::string>{"de=Deutsch", "en=English", "fr=Fran\u00E7ais"}));
  EXPECT_EQ(texts.entries(1).at(0).text, "Leave");
  EXPECT_EQ(texts.match("fr-CA").front().name, "Fran\u00E7ais");
}

TEST(KelmoFace, TellsOverridesThatStandForNothing) {
  kelmo::LoadOptions own;
  own.is_override = true;
  kelmo::Problems problems;
  kelmo::Loader loader;
  loader.add_memory("de\nfiles Alle\nhello Moin\n", "own.txt", problems, own);
  loader.add_memory(kGerman, "de.txt", problems);
  const kelmo::View view(loader.finish(problems), {"de"});
  EXPECT_EQ(view.tr("hello"), "Moin");
  ASSERT_EQ(problems.size(), 1U);
  const kelmo::Problem problem = problems.at(0);
  EXPECT_EQ(problem.code, KELMO_PROBLEM_OVERRIDES_NOTHING);
  EXPECT_EQ(problem.severity, kelmo::Severity::warning);
  EXPECT_EQ(problem.key, "files");
  EXPECT_EQ(problem.language, "de");
  EXPECT_EQ(problem.file, "own.txt");
  EXPECT_EQ(problem.line, 2U);
  EXPECT_EQ(problem.detail, "the key has plural forms: .one, .other");
}

TEST(KelmoFace, ReadsLineBreaksByChoice) {
  const std::string dictionary = "en\nlines One\\nTwo\n";
  struct Case {
    const char* name;
    bool lenient;
    bool line_breaks;
    const char* text;
    std::size_t problems;
  };
  for (const Case& row :
       {Case{"strict", false, false, "One\\nTwo", 0}, Case{"lenient", true, false, "One\nTwo", 1},
        Case{"asked for", false, true, "One\nTwo", 0},
        Case{"lenient and asked for", true, true, "One\nTwo", 0}}) {
    kelmo::LoadOptions options;
    options.lenient = row.lenient;
    options.line_breaks = row.line_breaks;
    kelmo::Problems problems;
    kelmo::Loader loader;
    loader.add_memory(dictionary, "en.txt", problems, options);
    EXPECT_EQ(kelmo::View(loader.finish(), {"en"}).tr("lines"), row.text) << row.name;
    EXPECT_EQ(problems.size(), row.problems) << row.name;
  }
}

TEST(KelmoFace, IsolatesArgumentsByChoice) {
  kelmo::ViewOptions options;
  options.languages = {"de"};
  options.isolate = true;
  const kelmo::View view(Load({kGerman}), options);
  EXPECT_EQ(view.tr("hello", kelmo::arg("name", "Anna")), "Hallo \u2068Anna\u2069!");
}

TEST(KelmoFace, ThrowsIfMemoryIsOutWhenALongTextIsWrittenAgain) {
  bool is_again = false;
  const auto print = [&is_again](char* /*buffer*/, std::size_t /*capacity*/, std::size_t* needed) {
    *needed = 1000;
    return std::exchange(is_again, true) ? KELMO_OUT_OF_MEMORY : KELMO_OK;
  };
  EXPECT_THROW(kelmo::detail::printed(print), std::bad_alloc);
}

}  // namespace
