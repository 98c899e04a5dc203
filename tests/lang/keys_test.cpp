// Headers, ids, and keys that are declared twice or empty.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lang/reading/name_language.h"
#include "tests/lang/findings_of.h"

namespace KelmoLibs::Lang {
namespace {

struct NameRow {
  const char* id;
  const char* path;
  bool fits;
};

TEST(CompareWithName, SaysWhetherTheIdFits) {
  const NameRow rows[] = {
      {"de", "de.txt", true},
      {"DE", "de.txt", true},  // only other files tell whether the case is wrong
      {"de", "fr.txt", false},
      {"de", "LANG/fr.txt", false},
      {"fr", "plugin-de.txt", false},
      {"de", "plugin-de.txt", true},
      {"de", "de-plugin.txt", true},
      {"fr", "de-plugin.txt", false},
      {"pt-BR", "strings_pt-BR.txt", true},
      {"pt", "strings_pt-BR.txt", true},
      {"pt_BR", "pt-BR.txt", true},
      {"pt-PT", "pt-BR.txt", false},
      {"zh-TW", "zh-Hant.txt", true},
      {"zh-Hans", "zh-Hant.txt", false},
      {"nb", "no.txt", true},
      {"Deutsch", "de.txt", false},
      {"plugin", "plugin.txt", true},
      {"de", "plugin.txt", true},
      {"de", "sign-in.txt", true},  // a word
      {"de", "ui.txt", true},
      {"en", "de-en.txt", true},
      {"de", "C:\\Texts\\fr.txt", false},
  };
  for (const NameRow& row : rows) {
    EXPECT_EQ(CompareWithName(row.id, row.path).fits, row.fits) << row.id << " in " << row.path;
  }
}

struct Row {
  const char* name;
  std::vector<MadeUpFile> files;
  std::string expected;
};

std::string KeyFindings(const std::vector<MadeUpFile>& files, std::optional<std::uint32_t> base) {
  return FindingsOf(files, base, RuleId::kHeader, RuleId::kIndentedLine);
}

TEST(CheckKeys, ReportsHeaders) {
  const std::string four = "a.a\tx\na.b\tx\na.c\tx\na.d\tx\n";
  const Row rows[] = {
      {"id and name", {{"de.txt", "de Deutsch\n" + four}}, ""},
      {"id alone", {{"de.txt", "de\n" + four}}, ""},
      {"empty file", {{"de.txt", ""}}, "de.txt:0:0 error header  header.empty_file\n"},
      {"empty line", {{"de.txt", "\n" + four}}, "de.txt:1:1 error header  header.blank_line\n"},
      {"indented", {{"de.txt", " de\n" + four}}, "de.txt:1:1 error header  header.indented\n"},
      {"entry", {{"de.txt", "a.e\tx\n" + four}}, "de.txt:1:1 error header  header.entry\n"},
      {"comment", {{"de.txt", "# x\n" + four}}, "de.txt:1:1 error header  header.comment\n"},
      {"no-break space",
       {{"de.txt", "de\u00A0Deutsch\n" + four}},
       "de.txt:1:1 error header  header.unicode_blank\n"},
      {"the file is not read at all", {{"de.txt", "\xFFxyz\n" + four}}, ""},
      {"header in another line",
       {{"de.txt", "a.e\tx\n" + four + "de Deutsch\n"}},
       "de.txt:1:1 error header  header.displaced\n"},
      {"id of another file in another line",
       {{"de.txt", "de Deutsch\n" + four}, {"plugin.txt", "a.e\tx\n" + four + "de Deutsch\n"}},
       "plugin.txt:1:1 error header  header.displaced\n"},
      {"a word of another language is no header",
       {{"de.txt", "de Deutsch\n" + four}, {"fr.txt", "a.e\tx\n" + four + "de la ville\n"}},
       "fr.txt:1:1 error header  header.entry\n"},
      {"files with the same wrong id are not one dictionary",
       {{"de.txt", "\n" + four}, {"fr.txt", "\n" + four}},
       "de.txt:1:1 error header  header.blank_line\n"
       "fr.txt:1:1 error header  header.blank_line\n"},
      {"id of another language",
       {{"fr.txt", "de Français\n" + four}},
       "fr.txt:1:1 warning id-unlike-name  id-unlike-name.message\n"},
      {"ids that differ only by case",
       {{"de.txt", "de Deutsch\n" + four}, {"de-plugin.txt", "DE Deutsch\nb\tx\n"}},
       "de-plugin.txt:1:1 warning id-unlike-name  id-unlike-name.case\n"},
      {"a region that no other id has",
       {{"de.txt", "de Deutsch\n" + four}, {"fr.txt", "fr_FR Français\n" + four}},
       "fr.txt:1:1 warning id-unlike-name  id-unlike-name.region\n"},
      {"regions everywhere",
       {{"de.txt", "de-DE Deutsch\n" + four}, {"fr.txt", "fr-FR Français\n" + four}},
       ""},
      {"a region that tells two varieties apart",
       {{"de.txt", "de Deutsch\n" + four}, {"pt.txt", "pt-BR Português\n" + four}},
       ""},
      {"a region in the name of the file",
       {{"de.txt", "de Deutsch\n" + four}, {"fr-FR.txt", "fr-FR Français\n" + four}},
       ""},
      {"ids and names of files that name no language",
       {{"f1.txt", "x1 X\n" + four}, {"f2.txt", "x2 X\n" + four}},
       ""},
      {"a region in a single file", {{"fr.txt", "fr-FR Français\n" + four}}, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(KeyFindings(row.files, std::nullopt), row.expected);
  }
}

TEST(CheckKeys, AKeyOfTheBaseIsNoId) {
  const MadeUpFile base = {"en.txt", "en English\nok\tOK\nno\tNo\nyes\tYes\n", false};
  EXPECT_EQ(KeyFindings({base, {"fr.txt", "ok\tOK\nno\tNon\nyes\tOui\n"}}, 0),
            "fr.txt:1:1 error header  header.entry\n");
  EXPECT_EQ(KeyFindings({base, {"no.txt", "no Norsk\nok\tOK\nno\tNei\nyes\tJa\n"}}, 0), "");
  EXPECT_EQ(KeyFindings({base, {"no.txt", "no Norsk\nok\tOK\nyes\tJa\n"}}, 0), "");
}

TEST(CheckKeys, ReportsDuplicateKeysAndIndentedLines) {
  const std::string ten = "a\t1\nb\t2\nc\t3\nd\t4\ne\t5\nf\t6\ng\t7\nh\t8\ni\t9\nj\t10\n";
  const Row rows[] = {
      {"another text",
       {{"de.txt", "de\na\t1\na\t2\n"}},
       "de.txt:3:1 error duplicate-key a duplicate-key.other_text\n"},
      {"the same text",
       {{"de.txt", "de\na\t1\na\t1\n"}},
       "de.txt:3:1 warning duplicate-key a duplicate-key.same_text\n"},
      {"in two files of one id",
       {{"de.txt", "de\na\t1\nb\t1\n"}, {"de-more.txt", "de\nc\t1\na\t2\n"}},
       "de-more.txt:3:1 error duplicate-key a duplicate-key.other_text\n"},
      {"in files of two ids", {{"de.txt", "de\na\t1\n"}, {"fr.txt", "fr\na\t2\n"}}, ""},
      {"a copy of a file is one cause",
       {{"de.txt", "de\n" + ten}, {"de-old.txt", "de\n" + ten + "k\t1\n"}},
       "de-old.txt:2:1 warning duplicate-key  duplicate-key.file.#\n"},
      {"a copy with the id of another language",
       {{"de.txt", "de\n" + ten}, {"fr.txt", "de\n" + ten}},
       "fr.txt:1:1 error id-unlike-name  id-unlike-name.lost.#\n"},
      {"the id of another language, and other keys",
       {{"de.txt", "de\nk\t1\n"}, {"fr.txt", "de\nk\t1\n" + ten}},
       "fr.txt:1:1 warning id-unlike-name  id-unlike-name.message\n"},
      {"indented",
       {{"de.txt", "de\n a\t1\n"}},
       "de.txt:2:1 error indented-line  indented-line.message\n"},
      {"indented twice: no duplicate key",
       {{"de.txt", "de\n\ta\t1\n\tb\t2\n"}},
       "de.txt:2:1 error indented-line  indented-line.message\n"
       "de.txt:3:1 error indented-line  indented-line.message\n"},
      {"lines of blanks",
       {{"de.txt", "de\n  \na\t1\n\t\n"}},
       "de.txt:2:1 warning indented-line  indented-line.blank.#\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(KeyFindings(row.files, std::nullopt), row.expected);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
