// What the wording of an English text tells about the ends of its translations.
#include "lang/rules/wording.h"

#include <gtest/gtest.h>

#include <string_view>

namespace KelmoLibs::Lang {
namespace {

struct WordingRow {
  const char* name;
  bool (*question)(std::string_view text);
  std::string_view text;
  bool expected;
};

TEST(Wording, IsToldByWords) {
  const WordingRow rows[] = {
      {"preposition", IsBeginOfSentence, "The pump depends on", true},
      {"every", IsBeginOfSentence, "_Save every", true},
      {"open bracket", IsBeginOfSentence, "Press a key (", true},
      {"noun at the end", IsBeginOfSentence, "Name of the pump", false},
      {"part of a word at the end", IsBeginOfSentence, "The chosen", false},
      {"empty text", IsBeginOfSentence, "", false},

      {"whether at the begin", HasIndirectQuestion, "Whether the pump runs.", true},
      {"whether within", HasIndirectQuestion, "Sets whether the pump runs.", true},
      {"question word at the begin", HasIndirectQuestion, "Where to save", true},
      {"question word behind an accelerator", HasIndirectQuestion, "&What to save", true},
      {"question word within", HasIndirectQuestion, "The pump stops when it is hot.", false},
      {"begin of a word", HasIndirectQuestion, "Whatever", false},
      {"no word", HasIndirectQuestion, "...", false},

      {"perhaps", IsGuess, "The pump stands. Perhaps it is off?", true},
      {"maybe", IsGuess, "Maybe the pump is off.", true},
      {"consider", IsGuess, "no rights, consider using --force?", true},
      {"question", IsGuess, "Is the pump off?", false},

      {"placeholder", IsProgress, "Loading %1", true},
      {"placeholder in braces", IsProgress, "Loading {name}", true},
      {"last sentence", IsProgress, "The file is empty. Skipping.\\n", true},
      {"label", IsProgress, "Setting the date", false},
      {"sentence", IsProgress, "The pump is running.", false},
      {"first sentence", IsProgress, "Loading failed. Try it again.", false},

      {"etc.", IsOpenList, "numbers, letters, etc.", true},
      {"etc", IsOpenList, "numbers, letters, etc\\n", true},
      {"two dots", IsOpenList, "files in DIR/..", true},
      {"full stop", IsOpenList, "numbers, letters.", false},

      {"below with a full stop", PointsBelow, "Please choose below.", true},
      {"below", PointsBelow, "Please choose below \\n", true},
      {"below within", PointsBelow, "The values below are wrong.", false},
  };
  for (const WordingRow& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.question(row.text), row.expected);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
