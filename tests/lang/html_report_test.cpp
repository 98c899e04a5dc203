// The page, to the byte, and what hostile files may do to it.
#include "lang/report/html_report.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "lang/report/html.h"
#include "lang/report/percent_encoding.h"
#include "tests/support/read_file.h"

namespace KelmoLibs::Lang {
namespace {

TEST(Html, WhatHasAMeaningInHtmlIsEscaped) {
  struct Row {
    const char* name;
    std::string_view text;
    const char* html;
  };
  const Row rows[] = {
      {"end of the style and a script", "</style><script>alert(1)</script>",
       "&lt;/style&gt;&lt;script&gt;alert(1)&lt;/script&gt;"},
      {"both quotes", "\"'", "&quot;&#39;"},
      {"an entity stays as it is written", "&lt;", "&amp;lt;"},
      {"NUL and escape", std::string_view("\0\x1B", 2), "&lt;U+0000&gt;&lt;U+001B&gt;"},
      {"bytes that are not UTF-8", "\xFF\xC3", "&lt;FF&gt;&lt;C3&gt;"},
      {"override of the direction", u8"\u202Eabc", "&lt;U+202E&gt;abc"},
      {"end of an isolation", u8"\u2069", "&lt;U+2069&gt;"},
      {"the marks of an argument", "\x02\x03", "&lt;U+0002&gt;&lt;U+0003&gt;"},
      {"letters of all scripts", u8"\u0416\u05D0\u4E2D", u8"\u0416\u05D0\u4E2D"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(HtmlOf(row.text), row.html) << row.name;
  }
}

TEST(Html, UnseenCharactersOfASourceAreMarked) {
  EXPECT_EQ(HtmlOfSource("a\tb<U+0000>"), u8"a<i>\u2192</i>b&lt;U+0000&gt;");
  EXPECT_EQ(HtmlOfSource(u8"\u00A0"), "<i>&lt;U+00A0&gt;</i>");
}

TEST(Html, ArgumentsOfASentenceAreIsolated) {
  const Texts texts("en");
  EXPECT_EQ(HtmlOf(Sentence{"missing.message", {u8"<\u05D0\x02>"}}, texts),
            u8"key &quot;<bdi dir=\"auto\">&lt;\u05D0&lt;U+0002&gt;&gt;</bdi>&quot; is missing");
  EXPECT_EQ(HtmlOf(Sentence{"summary.errors.#", {"1"}}, texts), "1 error");
}

TEST(Html, AddressesCannotLeaveTheirQuotes) {
  EXPECT_EQ(PercentEncoded(u8"page-mended/\u0416 \"?#%.txt"),
            "page-mended/%D0%96%20%22%3F%23%25.txt");
  EXPECT_EQ(PercentEncoded("javascript:1"), "javascript%3A1");
}

class HtmlReportTest : public ::testing::Test {
 protected:
  void AddFile(const std::string& name, const std::string& bytes, bool isReported = true) {
    WorkspaceFile file;
    file.dictionary = std::make_unique<DictionaryFile>(name, name, bytes);
    file.isReported = isReported;
    workspace_.files.push_back(std::move(file));
  }

  // A finding at the `length` code points from byte `offset` of line 2, which begins at `start`.
  Finding& AddFinding(RuleId rule, Severity severity, std::uint32_t file, std::size_t start,
                      std::uint32_t offset, std::uint32_t length) {
    Finding& finding = findings_.emplace_back();
    finding.rule = rule;
    finding.severity = severity;
    finding.place = {file, 2, offset + 1, length, start + offset};
    finding.message = {"missing.message", {"k"}};
    return finding;
  }

  std::string Write() {
    SortFindings(findings_);
    const Report report{workspace_, findings_, counted_, rulesNotRun_, {}};
    return HtmlReport({report, problems_, copies_, folderOfCopies_}, Texts("en"));
  }

  Workspace workspace_;
  std::vector<Finding> findings_;
  std::vector<CountedFindings> counted_;
  std::vector<RuleId> rulesNotRun_;
  std::vector<PageProblem> problems_;
  std::vector<MendedCopy> copies_;
  std::string folderOfCopies_;
};

// Takes out what is between `start` and `end`.
std::string Without(std::string text, std::string_view start, std::string_view end) {
  for (std::size_t at = 0; (at = text.find(start, at)) != std::string::npos;) {
    at += start.size();
    text.erase(at, text.find(end, at) - at);
  }
  return text;
}

// tests/data/lang/page.html has neither the style nor the explanations of the rules, which are
// texts of others. After a wanted change, copy the page from the message of this test.
TEST_F(HtmlReportTest, TheWholePage) {
  AddFile("en.txt", "en\nmsg.saved\tSaved\n", false);
  AddFile("de.txt", "de\nmsg.saved\tGespeichert\nmsg.b\tb\n");
  AddFile("</style><script>.txt", "he\n\xD7\x90<img src=x>\t\"'\xE2\x80\xAE\xFF\n");
  AddFile("fr.txt", "fr\nmsg.saved\tFichier enregistr\xE9\n");
  workspace_.baseFile = 0;
  Finding& finding = AddFinding(RuleId::kEncoding, Severity::kError, 3, 3, 27, 1);
  finding.hint = {"related.base", {"\xE9"}};
  finding.mend = {"missing.message", {"<b>"}};
  finding.related.push_back({{0, 2, 11, 5, 13}, {"related.base", {"Saved"}}});
  AddFinding(RuleId::kMissing, Severity::kWarning, 3, 3, 0, 0).place = {3, 0, 0, 0, 0};
  AddFinding(RuleId::kMissing, Severity::kWarning, 2, 3, 2, 4);
  AddFinding(RuleId::kEncoding, Severity::kNote, 2, 3, 0, 1);
  counted_.push_back({RuleId::kMissing, Severity::kWarning, 2, 1200});
  problems_.push_back({"<gone>.txt", {"problem.unreadable", {}}});
  copies_ = {{3, "page-mended/fr windows-1252.txt", "windows-1252", {{"missing.message", {"<a>"}}}},
             {2, "page-mended/a'.txt", "", {}}};
  folderOfCopies_ = "C:\\<folder>";
  const std::string page = Without(Without(Write(), "<style>", "</style>"), "<dl>", "</dl>");
  EXPECT_EQ(page, ReadProjectFile("tests/data/lang/page.html")) << page;
}

TEST_F(HtmlReportTest, WhatIsFineIsSaid) {
  AddFile("de.txt", "de\na\ta\nb\tb\n");
  AddFile("fr.txt", "fr\na\ta\n");
  const std::string page = Write();
  EXPECT_NE(page.find("no findings in its 2 texts"), std::string::npos);
  EXPECT_NE(page.find("no findings in its text"), std::string::npos);
}

TEST_F(HtmlReportTest, TheFolderOfAllFilesIsNamedOnce) {
  AddFile("C:/t/de.txt", "de\na\ta\n");
  AddFile("C:/t/deep/fr.txt", "fr\na\ta\n");
  const std::string page = Write();
  EXPECT_NE(page.find("The files are in the folder <bdi dir=\"auto\">C:/t/</bdi>."),
            std::string::npos);
  EXPECT_NE(page.find(">de.txt<"), std::string::npos);
  EXPECT_NE(page.find(">deep/fr.txt<"), std::string::npos);
}

TEST_F(HtmlReportTest, LongLinesAndManyFindingsAreCut) {
  const std::string letter = u8"\u0416";
  std::string line;
  for (int i = 0; i < 10'000; ++i) {
    line += letter;
  }
  AddFile("ru.txt", "ru\n" + line + '\n');
  for (int i = 0; i < 150; ++i) {
    AddFinding(RuleId::kLength, Severity::kNote, 0, 3, 5000, 9000);
  }
  const std::string page = Write();
  EXPECT_LT(page.size(), 200'000U);
  EXPECT_NE(page.find(u8"\u2026 and 50 more of this kind"), std::string::npos);
  EXPECT_NE(page.find(u8"auto\">\u2026\u0416"), std::string::npos);
  EXPECT_NE(page.find(u8"\u0416\u2026</bdi>"), std::string::npos);
  EXPECT_EQ(page.find("&lt;96&gt;"), std::string::npos) << "a character was cut";
}

}  // namespace
}  // namespace KelmoLibs::Lang
