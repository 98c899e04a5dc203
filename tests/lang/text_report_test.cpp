// The report for people, to the byte.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lang/report/report.h"

namespace KelmoLibs::Lang {
namespace {

class TextReportTest : public ::testing::Test {
 protected:
  TextReportTest() {
    AddFile("en.txt", "en\nmsg.saved\tSaved\n");
    AddFile("fr.txt", "fr\nmsg.saved\tFichier enregistr\xE9\n");
  }

  void AddFile(const std::string& name, const std::string& bytes) {
    WorkspaceFile file;
    file.dictionary = std::make_unique<DictionaryFile>(name, name, bytes);
    workspace_.files.push_back(std::move(file));
  }

  // A finding at the `length` code points from byte `offset` of line 2 in file 1.
  static Finding FindingAt(RuleId rule, Severity severity, std::uint32_t offset,
                           std::uint32_t length) {
    Finding finding = {};
    finding.rule = rule;
    finding.severity = severity;
    finding.place = {1, 2, offset + 1, length, offset + 3};
    finding.message = {"missing.message", {"k"}};
    return finding;
  }

  std::string Write(const TextStyle& style = {}, const char* language = "en") const {
    return TextReport(Report{workspace_, findings_, counted_, rulesNotRun_, sets_}, Texts(language),
                      style);
  }

  Workspace workspace_;
  std::vector<Finding> findings_;
  std::vector<CountedFindings> counted_;
  std::vector<RuleId> rulesNotRun_;
  std::vector<std::uint32_t> sets_;
};

TEST_F(TextReportTest, SaysThatNothingWasFound) { EXPECT_EQ(Write(), "no findings in 2 files\n"); }

TEST_F(TextReportTest, ShowsAFindingWithItsLineHintMendAndRelatedPlaces) {
  Finding& finding = findings_.emplace_back(FindingAt(RuleId::kEncoding, Severity::kError, 27, 1));
  finding.hint = {"related.base", {"\xE9"}};
  finding.mend = {"missing.message", {"a\tb"}};
  finding.mendCommand = "fix --from windows-1252 fr.txt";
  finding.related.push_back({{0, 2, 11, 5, 13}, {"related.base", {"Saved"}}});
  finding.related.push_back({{0, 0, 0, 0, 0}, {"related.without_label", {}}});
  EXPECT_EQ(Write(),
            "fr.txt:2:28: error: key \"k\" is missing [encoding]\n"
            u8"    2 | msg.saved\u2192Fichier enregistr<E9>\n"
            "      |                            ^^^^ \"<E9>\"\n"
            u8"   mend: key \"a\u2192b\" is missing\n"
            "     or: kelmo-lang fix --from windows-1252 fr.txt\n"
            "   base: en.txt:2 \"Saved\"\n"
            "    see: en.txt related.without_label\n"
            "what a rule means, and what to do: kelmo-lang rules RULE\n"
            "1 error in 2 files\n");
}

TEST_F(TextReportTest, EndsWideLabelsInOneColumn) {
  Finding& finding = findings_.emplace_back(FindingAt(RuleId::kComment, Severity::kError, 0, 9));
  finding.mend = {"label.or", {}};
  finding.related.push_back({{0, 2, 11, 5, 13}, {"related.base", {"Saved"}}});
  EXPECT_EQ(Write({}, "ru"),
            u8"fr.txt:2:1: ошибка: нет ключа «k» [comment]\n"
            u8"    2 | msg.saved\u2192Fichier enregistr<E9>\n"
            "      | ^^^^^^^^^\n"
            u8" решение: или\n"
            u8"оригинал: en.txt:2 «Saved»\n"
            u8"что значит правило и что делать: kelmo-lang rules ПРАВИЛО\n"
            u8"1 ошибка в 2 файлах\n");
}

TEST_F(TextReportTest, ShowsNoLineOfAFindingAboutTheFile) {
  Finding finding = {};
  finding.rule = RuleId::kMissing;
  finding.severity = Severity::kWarning;
  finding.place.file = 1;
  finding.message = {"missing.message", {"a"}};
  finding.hint = {"related.base", {"b"}};
  finding.mendCommand = "fix fr.txt";
  findings_.push_back(finding);
  EXPECT_EQ(Write(),
            "fr.txt: warning: key \"a\" is missing [missing]\n"
            "   hint: \"b\"\n"
            "   mend: kelmo-lang fix fr.txt\n"
            "what a rule means, and what to do: kelmo-lang rules RULE\n"
            "1 warning in 2 files\n");
}

TEST_F(TextReportTest, ColoursATerminal) {
  findings_.push_back(FindingAt(RuleId::kComment, Severity::kWarning, 0, 3));
  TextStyle style;
  style.hasColours = true;
  EXPECT_EQ(
      Write(style),
      "\x1B[1mfr.txt:2:1:\x1B[0m \x1B[1;33mwarning:\x1B[0m \x1B[1mkey \"k\" is missing\x1B[0m "
      "[comment]\n"
      u8"\x1B[1;34m    2 |\x1B[0m msg.saved\u2192Fichier enregistr<E9>\n"
      "\x1B[1;34m      |\x1B[0m \x1B[1;33m^^^\x1B[0m\n"
      "what a rule means, and what to do: kelmo-lang rules RULE\n"
      "\x1B[1;33m1 warning\x1B[0m in 2 files\n");
}

TEST_F(TextReportTest, CutsALongLineToTheTerminal) {
  AddFile("long.txt", "de\nk " + std::string(1000, 'x') + "\n");
  Finding finding = FindingAt(RuleId::kComment, Severity::kNote, 500, 1);
  finding.place.file = 2;
  findings_.push_back(finding);
  TextStyle style;
  style.width = 30;
  EXPECT_EQ(Write(style),
            "long.txt:2:501: note: key \"k\" is missing [comment]\n"
            u8"    2 | \u2026xxxxxxxxxxxxxxxxxxxx\u2026\n"
            "      |           ^\n"
            "what a rule means, and what to do: kelmo-lang rules RULE\n"
            "1 note in 3 files\n");
}

TEST_F(TextReportTest, ShowsTwentyOfARuleAndCountsTheOthers) {
  for (int i = 0; i < 23; ++i) {
    findings_.push_back(FindingAt(RuleId::kComment, Severity::kNote, 0, 1));
  }
  findings_.push_back(FindingAt(RuleId::kTag, Severity::kNote, 0, 1));
  counted_.push_back({RuleId::kTag, Severity::kNote, 1, 1000});
  const auto count = [](const std::string& text, const std::string& part) {
    std::size_t number = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++number;
    }
    return number;
  };
  const std::string some = Write();
  EXPECT_EQ(count(some, "[comment]\n"), 20U);
  EXPECT_EQ(some.substr(some.find(u8"\u2026")),
            u8"\u2026 3 more of [comment]: --all shows them\n"
            u8"\u2026 1000 more of [tag]: --all shows them\n"
            "what a rule means, and what to do: kelmo-lang rules RULE\n"
            "1024 notes in 2 files\n");
  TextStyle style;
  style.showsAll = true;
  const std::string all = Write(style);
  EXPECT_EQ(count(all, "[comment]\n"), 23U);
  EXPECT_EQ(
      all.substr(all.find(u8"\u2026")),
      u8"\u2026 1000 more of [tag]\nwhat a rule means, and what to do: kelmo-lang rules RULE\n"
      "1024 notes in 2 files\n");
}

TEST_F(TextReportTest, SaysWhatWasNotDone) {
  rulesNotRun_ = {RuleId::kMissing, RuleId::kEmpty};
  sets_ = {0, 1};
  EXPECT_EQ(Write(),
            "not run, because there is no base (--base): missing, empty\n"
            "not compared with the base, because they have other keys: en.txt, fr.txt\n"
            "no findings in 2 files\n");
}

TEST_F(TextReportTest, CountsEachSeverity) {
  for (const Severity severity : {Severity::kError, Severity::kError, Severity::kWarning}) {
    findings_.push_back(FindingAt(RuleId::kComment, severity, 0, 1));
  }
  counted_.push_back({RuleId::kComment, Severity::kNote, 1, 5});
  const std::string text = Write();
  EXPECT_EQ(text.substr(text.rfind('\n', text.size() - 2) + 1),
            "2 errors, 1 warning, 5 notes in 2 files\n");
}

TEST(SortFindings, PutsTheWorstFirstThenByFileAndPlace) {
  const auto make = [](const char* key, Severity severity, std::uint32_t file, std::uint32_t line,
                       std::uint32_t column) {
    Finding finding = {};
    finding.severity = severity;
    finding.place = {file, line, column, 1, 0};
    finding.key = key;
    return finding;
  };
  std::vector<Finding> findings = {
      make("g", Severity::kNote, 0, 1, 1),    make("e", Severity::kWarning, 0, 1, 1),
      make("d", Severity::kError, 1, 9, 9),   make("c", Severity::kError, 1, 9, 8),
      make("f", Severity::kWarning, 0, 1, 1), make("b", Severity::kError, 1, 8, 9),
      make("a", Severity::kError, 0, 9, 9),
  };
  SortFindings(findings);
  std::string order;
  for (const Finding& finding : findings) {
    order += finding.key;
  }
  EXPECT_EQ(order, "abcdefg");
}

}  // namespace
}  // namespace KelmoLibs::Lang
