// What the command line means, and what the program says about wrong use.
#include "lang/commands/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace KelmoLibs::Lang {
namespace {

constexpr unsigned kWidth = 80;

using Arguments = std::vector<std::string>;

CommandLine Parse(const Arguments& arguments, const std::string& userLanguage = "en") {
  return ParseCommandLine(arguments, userLanguage, kWidth);
}

Answer AnswerTo(const Arguments& arguments, const std::string& userLanguage = "en") {
  const CommandLine line = Parse(arguments, userLanguage);
  const Answer* const answer = std::get_if<Answer>(&line.command);
  return answer != nullptr ? *answer : Answer{-1, "", "a command runs"};
}

TEST(CommandLine, WrongUseGivesOneLineAndStatus2) {
  struct Row {
    const char* name;
    Arguments arguments;
    const char* error;
  };
  const Row rows[] = {
      {"unknown command",
       {"lin"},
       "kelmo-lang: there is no command \"lin\"; see \"kelmo-lang --help\"\n"},
      {"folder instead of a command",
       {"/texts"},
       "kelmo-lang: there is no command \"/texts\"; see \"kelmo-lang --help\"\n"},
      {"unknown option",
       {"lint", "--bas"},
       "kelmo-lang lint: there is no option \"--bas\"; see \"kelmo-lang lint --help\"\n"},
      {"unknown short option in front of the command",
       {"-x", "lint"},
       "kelmo-lang lint: there is no option \"-x\"; see \"kelmo-lang lint --help\"\n"},
      {"value is missing at the end",
       {"lint", "--base"},
       "kelmo-lang lint: --base needs a value; see \"kelmo-lang lint --help\"\n"},
      {"empty value",
       {"lint", "--base="},
       "kelmo-lang lint: --base needs a value; see \"kelmo-lang lint --help\"\n"},
      {"empty value in front of an argument",
       {"lint", "--html=", "fr.txt"},
       "kelmo-lang lint: --html needs a value; see \"kelmo-lang lint --help\"\n"},
      {"empty value in front of an option",
       {"fix", "--from=", "--diff", "fr.txt"},
       "kelmo-lang fix: --from needs a value; see \"kelmo-lang fix --help\"\n"},
      {"empty value of an option that has none",
       {"lint", "--all=", "fr.txt"},
       "kelmo-lang lint: --all takes no value; see \"kelmo-lang lint --help\"\n"},
      {"value of an option that has none",
       {"--version=3"},
       "kelmo-lang: --version takes no value; see \"kelmo-lang --help\"\n"},
      {"unknown language",
       {"--lang", "fr", "lint"},
       "kelmo-lang lint: --lang cannot be \"fr\"; possible are: de, en, ru; see \"kelmo-lang lint "
       "--help\"\n"},
      {"line end and escape sequence in an argument",
       {"lint", "--a\n\x1B[2Jb\x7F"},
       "kelmo-lang lint: there is no option \"--a<U+000A><U+001B>[2Jb<U+007F>\"; see \"kelmo-lang "
       "lint --help\"\n"},
      {"%1 in an argument",
       {"lint", "--%1%2"},
       "kelmo-lang lint: there is no option \"--%1%2\"; see \"kelmo-lang lint --help\"\n"},
      {"brackets in an argument",
       {"[lint]"},
       "kelmo-lang: there is no command \"[lint]\"; see \"kelmo-lang --help\"\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Answer answer = AnswerTo(row.arguments);
    EXPECT_EQ(answer.status, 2);
    EXPECT_EQ(answer.output, "");
    EXPECT_EQ(answer.error, row.error);
  }
}

TEST(CommandLine, WithoutACommandTheHelpGoesToTheErrors) {
  const Answer help = AnswerTo({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.error, "");
  const Answer answer = AnswerTo({});
  EXPECT_EQ(answer.status, 2);
  EXPECT_EQ(answer.output, "");
  EXPECT_EQ(answer.error, help.output);
}

TEST(CommandLine, PathsAreTakenAsTheyAre) {
  struct Row {
    const char* name;
    Arguments arguments;
    std::vector<std::string> paths;
  };
  const Row rows[] = {
      {"none", {"lint"}, {}},
      {"two", {"lint", "fr.txt", "LANG"}, {"fr.txt", "LANG"}},
      {"name of a command", {"lint", "lint"}, {"lint"}},
      {"behind --", {"lint", "--", "--base", "-x"}, {"--base", "-x"}},
      {"a list for CLI11", {"lint", "[a,b]", "[c]"}, {"[a,b]", "[c]"}},
      {"an option for Windows", {"lint", "/base"}, {"/base"}},
      {"pattern", {"lint", "*.txt"}, {"*.txt"}},
      {"Cyrillic letters and a blank",
       {"lint", "\u043C\u043E\u0439 fr.txt"},
       {"\u043C\u043E\u0439 fr.txt"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const CommandLine line = Parse(row.arguments);
    const LintOptions* const options = std::get_if<LintOptions>(&line.command);
    ASSERT_NE(options, nullptr);
    EXPECT_EQ(options->paths, row.paths);
    EXPECT_EQ(options->base, std::nullopt);
  }
}

TEST(CommandLine, TheLastValueOfAnOptionCounts) {
  const CommandLine line = Parse({"lint", "--base", "a.txt", "x.txt", "--base=[b].txt"});
  const LintOptions* const options = std::get_if<LintOptions>(&line.command);
  ASSERT_NE(options, nullptr);
  EXPECT_EQ(options->base, "[b].txt");
  EXPECT_EQ(options->paths, std::vector<std::string>{"x.txt"});
}

TEST(CommandLine, TheLanguageIsTheOptionThenThatOfTheUserThenEnglish) {
  struct Row {
    Arguments arguments;
    const char* userLanguage;
    const char* language;
  };
  const Row rows[] = {
      {{"lint"}, "de", "de"},
      {{"lint"}, "fr", "en"},
      {{"lint"}, "", "en"},
      {{"--lang", "ru", "lint"}, "de", "ru"},
      {{"lint", "--lang=ru"}, "de", "ru"},
      {{"lint", "--", "--lang=ru"}, "de", "de"},
      {{"--lang", "fr", "lint"}, "de", "en"},  // and an error
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Parse(row.arguments, row.userLanguage).language, row.language)
        << testing::PrintToString(row.arguments) << row.userLanguage;
  }
}

// Every text of a help exists: a missing one would be shown as its key.
TEST(CommandLine, EveryHelpHasItsTextsAndTwoExamples) {
  for (const Arguments& command : {Arguments{},
                                   {"fix"},
                                   {"ignore"},
                                   {"lint"},
                                   {"rules"},
                                   {"show"},
                                   {"units"},
                                   {"units", "list"},
                                   {"units", "explain"}}) {
    Arguments arguments = command;
    arguments.emplace_back("--help");
    const Answer answer = AnswerTo(arguments);
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.output.find("help."), std::string::npos) << answer.output;
    const std::size_t examples = answer.output.find("\nExamples:\n  kelmo-lang ");
    ASSERT_NE(examples, std::string::npos) << answer.output;
    const std::size_t second = answer.output.find("\n  kelmo-lang ", examples + 12);
    EXPECT_NE(second, std::string::npos) << answer.output;
  }
}

TEST(CommandLine, HelpFitsTheTerminal) {
  const std::string help =
      std::get<Answer>(ParseCommandLine({"lint", "--help"}, "en", 50).command).output;
  std::size_t start = 0;
  while (start < help.size()) {
    const std::size_t end = help.find('\n', start);
    EXPECT_LE(end - start, 50U) << help.substr(start, end - start);
    start = end + 1;
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
