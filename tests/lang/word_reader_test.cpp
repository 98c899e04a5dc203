// Words of a text.
#include "lang/rules/word_reader.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Lang {
namespace {

// The words and what stands before them: "<before>word".
std::string WordsOf(std::string_view text) {
  std::string words;
  WordReader reader(text);
  for (Word word; reader.Next(word);) {
    words.append("<").append(word.before).append(">").append(word.letters);
  }
  return words;
}

TEST(WordReader, LeavesOutPlaceholdersTagsAndEscapes) {
  struct Row {
    const char* name;
    std::string text;
    std::string words;
  };
  const Row rows[] = {
      {"empty", "", ""},
      {"no word", " %s 12.", ""},
      {"two words", "the pump.", "<>the< >pump"},
      {"digits end a word", "L10h", "<>L<10>h"},
      {"letters of all scripts", u8"Füße насос 水", u8"<>Füße< >насос< >水"},
      {"mark on a letter", "e\u0301a", "<>e\u0301a"},
      {"printf", "%-5.2fm", "<%-5.2f>m"},
      {"printf with a length", "%ldm", "<%ld>m"},
      {"numbered printf", "%1$sm", "<%1$s>m"},
      {"Qt", u8"%1м", u8"<%1>м"},
      {"name in parentheses", "%(name)sm", "<%(name)s>m"},
      {"a percentage is none", "100% sure", "<100% >sure"},
      {"percent sign at the end", "a%", "<>a"},
      {"escape", "\\nfirst", "<\\n>first"},
      {"backslash at the end", "a\\", "<>a"},
      {"braces", "{name}s", "<{name}>s"},
      {"braces with a blank are none", "{name s}", "<{>name< >s"},
      {"open brace", "{name", "<{>name"},
      {"shell variable", "$HOME/a", "<$HOME/>a"},
      {"shell variable in braces", "${HOME}a", "<${HOME}>a"},
      {"dollars", "$ five", "<$ >five"},
      {"tag", "<b class='x'>bold</b>", "<<b class='x'>>bold"},
      {"less than", "a < b", "<>a< < >b"},
      {"open tag", "<bold", "<<>bold"},
      {"entity", "&nbsp;as", "<&nbsp;>as"},
      {"ampersand", "R&D", "<>R<&>D"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(WordsOf(row.text), row.words);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
