// The command line that people copy into a shell.
#include "lang/rules/fix_command.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Lang {
namespace {

TEST(FixCommand, NamesTheFileAsShellsNeedIt) {
  struct Row {
    const char* why;
    std::string name;
    std::string command;
  };
  const Row rows[] = {
      {"plain", "LANG/fr-1_a.txt", "fix LANG/fr-1_a.txt"},
      {"a drive", "C:/LANG/fr.txt", "fix C:/LANG/fr.txt"},
      {"Cyrillic", u8"\u0440.txt", u8"fix \u0440.txt"},
      {"a blank", "a b.txt", "fix \"a b.txt\""},
      {"an apostrophe", "l'a.txt", "fix \"l'a.txt\""},
      {"signs of shells", "a&b|c>d;e*.txt", "fix \"a&b|c>d;e*.txt\""},
      {"a comment", "#a.txt", "fix \"#a.txt\""},
      {"the home", "~.txt", "fix \"~.txt\""},
      {"a line end", "a\nb.txt", "fix \"a\nb.txt\""},
      {"a command", "$(x).txt", "fix '$(x).txt'"},
      {"a command in old style", "`x`.txt", "fix '`x`.txt'"},
      {"a quote and an apostrophe", "\"x'.txt", R"(fix '"x'\''.txt')"},
      {"a backslash", "\\x.txt", R"(fix '\x.txt')"},
      {"like an option", "-x.txt", "fix ./-x.txt"},
      {"like an option, and a blank", "-x y.txt", "fix \"./-x y.txt\""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FixCommand("", row.name), row.command) << row.why;
  }
  EXPECT_EQ(FixCommand("--from koi8-r ", "a.txt"), "fix --from koi8-r a.txt");
}

}  // namespace
}  // namespace KelmoLibs::Lang
