// Lines that mean something else to their author than to the library.
#include <gtest/gtest.h>

#include <string>

#include "lang/rules/line_kind.h"
#include "tests/lang/findings_of.h"

namespace KelmoLibs::Lang {
namespace {

struct LineRow {
  const char* name;
  Entry entry;
  LineKind kind;
  TextFormat format;
};

TEST(LineKind, IsJudgedByTheKey) {
  const LineRow rows[] = {
      {"entry", {"menu.open", "# Open"}, LineKind::kEntry, TextFormat::kDictionary},
      {"comment", {"#", "Menu"}, LineKind::kComment, TextFormat::kDictionary},
      {"comment of several marks", {"##", "Menu"}, LineKind::kComment, TextFormat::kDictionary},
      {"word behind the mark", {"#menu", ""}, LineKind::kWordComment, TextFormat::kDictionary},
      {"semicolon", {";", "Menu"}, LineKind::kComment, TextFormat::kDictionary},
      {"two slashes", {"//", "Menu"}, LineKind::kComment, TextFormat::kDictionary},
      {"one slash is a key", {"/", "of"}, LineKind::kEntry, TextFormat::kDictionary},
      {"C comment", {"/*", "Menu */"}, LineKind::kComment, TextFormat::kDictionary},
      {"XML comment", {"<!--", "Menu -->"}, LineKind::kComment, TextFormat::kDictionary},
      {"line that divides", {"---", ""}, LineKind::kComment, TextFormat::kDictionary},
      {"minus", {"-", "minus"}, LineKind::kEntry, TextFormat::kDictionary},
      {"section", {"[menu]", ""}, LineKind::kSection, TextFormat::kDictionary},
      {"section of two words", {"[main", "menu]"}, LineKind::kSection, TextFormat::kDictionary},
      {"key in brackets", {"[x]", "Close"}, LineKind::kEntry, TextFormat::kDictionary},
      {"bracket in the text", {"[", "[x]"}, LineKind::kSection, TextFormat::kDictionary},
      {"conflict", {"<<<<<<<", "HEAD"}, LineKind::kConflictStart, TextFormat::kDictionary},
      {"conflict, middle", {"=======", ""}, LineKind::kConflictMid, TextFormat::kDictionary},
      {"conflict, base", {"|||||||", "base"}, LineKind::kConflictMid, TextFormat::kDictionary},
      {"conflict, end", {">>>>>>>", "new"}, LineKind::kConflictEnd, TextFormat::kDictionary},
      {"arrow", {">>", "Next"}, LineKind::kEntry, TextFormat::kDictionary},
      {"key=value", {"menu.open=Open", "a file"}, LineKind::kEntry, TextFormat::kKeyValue},
      {"key = value", {"menu.open", "= Open"}, LineKind::kEntry, TextFormat::kKeyValue},
      {"quoted CSV", {"\"a\",\"b\"", ""}, LineKind::kEntry, TextFormat::kSpreadsheet},
      {"CSV", {"menu.open;Open", "file"}, LineKind::kEntry, TextFormat::kSpreadsheet},
      {"JSON", {"\"a\":", "\"b\","}, LineKind::kEntry, TextFormat::kJson},
      {"JSON, indented", {"", "\"a\": \"b\","}, LineKind::kEntry, TextFormat::kJson},
      {"brace", {"}", ""}, LineKind::kEntry, TextFormat::kJson},
      {"placeholder as key", {"{0}", "x"}, LineKind::kEntry, TextFormat::kDictionary},
      {"PO", {"msgid", "\"a\""}, LineKind::kEntry, TextFormat::kPo},
      {"PO, plural", {"msgstr[0]", "\"a\""}, LineKind::kEntry, TextFormat::kPo},
      {"XML", {"<data", "name=\"a\">"}, LineKind::kEntry, TextFormat::kXml},
      {".strings", {"\"a\"", "= \"b\";"}, LineKind::kEntry, TextFormat::kStrings},
      {"YAML", {"menu:", ""}, LineKind::kEntry, TextFormat::kYaml},
      {"empty key", {"", ""}, LineKind::kEntry, TextFormat::kDictionary},
  };
  for (const LineRow& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(KindOf(row.entry), row.kind);
    EXPECT_EQ(FormatOf(row.entry), row.format);
  }
}

struct Row {
  const char* name;
  std::string lines;  // behind the header
  std::string expected;
};

TEST(CheckLines, ReportsOneFindingForOneCause) {
  const std::string four = "a.a\tx\na.b\tx\na.c\tx\na.d\tx\n";
  const Row rows[] = {
      {"no fault", four, ""},
      {"all comments of a file", "# x\n" + four + "# y\n#z\n",
       "f:2:1 warning comment # comment.message.#\n"},
      {"most keys begin with #", "#a x\n#b x\nc x\n", ""},
      {"a line of = without a conflict", four + "=======\n",
       "f:6:1 warning comment ======= comment.message.#\n"},
      {"conflict without an end", four + "<<<<<<< HEAD\n=======\n",
       "f:6:1 error conflict-marker  conflict-marker.message\n"},
      {"end of a conflict alone", four + ">>>>>>> new\n",
       "f:6:1 error conflict-marker  conflict-marker.message\n"},
      {"duplicate keys within a conflict", four + "<<<<<<< a\na.e\tx\n=======\na.e\ty\n>>>>>>> b\n",
       "f:6:1 error conflict-marker  conflict-marker.message\n"},
      {"a few key=value", four + "a.e=x y\na.f=z\n",
       "f:6:1 error other-format a.e=x other-format.equals_signs.#\n"},
      {"= at the end of a key", four + "a.e=\tx\n", ""},
      {"one JSON line proves nothing", "\"a\":\t1\nb\t2\nc\t3\n", ""},
      {"continued text", four + "and more words\nof it.\n",
       "f:6:1 error continued-text a.d continued-text.message.#\n"},
      {"indented continued text", four + "   and more\n",
       "f:6:1 error continued-text a.d continued-text.message.#\n"},
      {"a plain word as key", four + "title\tTitle\n", ""},
      {"a plain word without a text", four + "title\n", ""},
      {"keys that are plain words", "yes\tx\nno\ty\nperhaps\tz\nand so on\n", ""},
      {"no text to continue", "a.a\tx\na.b\tx\na.c\tx\na.d\nand more words\n", ""},
      {"no-break space as separator", four + "a.e\u00A0x y\n",
       "f:6:4 error blank-in-key a.e\u00A0x blank-in-key.no_break\n"},
      {"zero-width space", four + "a.\u200Be\tx\n",
       "f:6:3 error blank-in-key a.\u200Be blank-in-key.invisible\n"},
      {"joiner between Arabic letters", four + "\u0645\u200C\u062E\tx\n", ""},
      {"joiner behind a Latin letter", four + "a.\u200Ce\tx\n",
       "f:6:3 error blank-in-key a.\u200Ce blank-in-key.invisible\n"},
      {"no-break space in a text", four + "a.e\tx\u00A0y\n", ""},
      {"second tab", four + "a.e\tx\ty\n", "f:6:6 warning second-tab a.e second-tab.message.#\n"},
      {"tabs at the end", four + "a.e\tx\t\t\n", ""},
      {"a third column", "a\t1\tx\nb\t2\tx\nc\t3\tx\nd\t4\tx\ne\t5\tx\nf\t6\tx\n",
       "f:2:4 warning second-tab a second-tab.message.#\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(
        FindingsOf({{"f", "x Name\n" + row.lines}}, std::nullopt, RuleId::kHeader, RuleId::kEmpty),
        row.expected);
  }
}

TEST(CheckLines, ReportsMovedColumns) {
  const Row rows[] = {
      {"swapped", "Auf\ta.a\nZu und\ta.b\nAus\ta.c\nb\tx\n",
       "f:2:1 error other-format  other-format.swapped\n"},
      {"swapped in half of the lines", "Auf\ta.a\nZu\ta.b\na.c\tx\nb\tx\n", ""},
      {"texts that are keys, behind keys", "a.a\ta.b\na.b\ta.c\na.c\ta.a\nb\tb\n", ""},
      {"row numbers", "1\ta.a\tx\n2\ta.b\ty z\n7\ta.c\tx\n",
       "f:2:1 error other-format  other-format.row_numbers\n"},
      {"row numbers and blanks", "1 a.a x\n2 a.b x\n3 a.c x\n",
       "f:2:1 error other-format  other-format.row_numbers\n"},
      {"numbers that do not count up", "2\ta.a\tx\n1\ta.b\tx\n0\ta.c\tx\n",
       "f:2:6 warning second-tab 2 second-tab.message.#\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(FindingsOf({{"base", "en English\na.a\tx\na.b\tx\na.c\tx\nb\tx\n", false},
                          {"f", "x Name\n" + row.lines}},
                         0, RuleId::kConflictMarker, RuleId::kSecondTab),
              row.expected);
  }
}

TEST(CheckLines, ReportsRichText) {
  EXPECT_EQ(FindingsOf({{"f", "{\\rtf1\\ansi\n\\f0 de\\par\n\\par\n\\par\n}\n"}}, std::nullopt,
                       RuleId::kEncoding, RuleId::kInconsistent),
            "f:1:1 error other-format  other-format.rtf\n");
}

TEST(CheckLines, ReportsEntriesBehindSeparators) {
  const Row rows[] = {
      {"a tab behind the key", "a.a\tx\u2028c\tx\n",
       "f:2:6 error line-end a.a line-end.separator_lost_entry\n"},
      {"paragraph separator", "a.a\tx\u2029c\tx\n",
       "f:2:6 error line-end a.a line-end.separator_lost_entry\n"},
      {"next line", "a.a\tx\u0085c\tx\n",
       "f:2:6 error line-end a.a line-end.separator_lost_entry\n"},
      {"a missing key of the base", "a.a\tx\u2028a.b x\n",
       "f:2:6 error line-end a.a line-end.separator_lost_entry\n"},
      {"a key that is not missing", "a.b\ty\na.a\tx\u2028a.b x\n",
       "f:3:6 warning line-end a.a line-end.separator\n"},
      {"a word", "a.a\tx\u2028word x\n", "f:2:6 warning line-end a.a line-end.separator\n"},
      {"at the end", "a.a\tx\u2028\n", "f:2:6 warning line-end a.a line-end.separator\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(
        FindingsOf({{"base", "en English\na.a\tx\na.b\tx\n", false}, {"f", "x Name\n" + row.lines}},
                   0, RuleId::kLineEnd, RuleId::kLineEnd),
        row.expected);
  }
}

TEST(CheckLines, AKeyOfTheBaseIsRight) {
  const std::string base = "en English\n#a\tx\nb\u00A0c\tx\nd\tx\ty\ne\t1\nf\t2\n";
  const std::string translation = "de Deutsch\n#a\tx\nb\u00A0c\tx\nd\tx\ty\ne\t1\nf\t2\n";
  EXPECT_EQ(
      FindingsOf({{"en", base, false}, {"de", translation}}, 0, RuleId::kHeader, RuleId::kEmpty),
      "");
}

}  // namespace
}  // namespace KelmoLibs::Lang
